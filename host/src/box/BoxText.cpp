#include "box/BoxText.h"

#include "core/AtomText.h"
#include "ext_obex.h"

namespace velmohost {

std::optional<BoxText> ParseBoxText(const std::string& text) {
    std::vector<t_atom> atoms = ParseAtoms(text);
    if (atoms.empty() || atoms.front().a_type != A_SYM) return std::nullopt;
    return BoxText{atom_getsym(&atoms.front()), {atoms.begin() + 1, atoms.end()}};
}

std::optional<MessageText> ParseMessageText(const std::string& text) {
    std::vector<t_atom> atoms = ParseAtoms(text);
    if (atoms.empty()) return std::nullopt;
    const short firstType = atoms.front().a_type;
    if (firstType == A_SYM) return MessageText{atom_getsym(&atoms.front()), {atoms.begin() + 1, atoms.end()}};
    if (atoms.size() > 1) return MessageText{gensym("list"), atoms};
    return MessageText{gensym(firstType == A_LONG ? "int" : "float"), atoms};
}

}  // namespace velmohost
