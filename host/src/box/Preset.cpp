#include "box/Preset.h"

#include <utility>

#include "core/AtomText.h"
#include "ext_obex.h"
#include "window/MaxWindow.h"

namespace velmohost {
namespace {

/// A binbuf that the symbol "_preset" leads to within a scope.
class ScopedPresetBinbuf {
public:
    ScopedPresetBinbuf() { symbol->s_thing = static_cast<t_object*>(binbuf); }
    ~ScopedPresetBinbuf() {
        symbol->s_thing = nullptr;
        object_free(binbuf);
    }
    ScopedPresetBinbuf(const ScopedPresetBinbuf&) = delete;
    ScopedPresetBinbuf& operator=(const ScopedPresetBinbuf&) = delete;

    t_binbuf* Get() const { return binbuf; }

private:
    t_binbuf* const binbuf = binbuf_new();
    t_symbol* const symbol = gensym("_preset");
};

/// The binbuf's messages, each without the semicolon at its end.
std::vector<std::vector<t_atom>> GetMessages(t_binbuf* binbuf) {
    std::vector<std::vector<t_atom>> messages;
    std::vector<t_atom> message;
    long typePosition = 0, position = 0;
    for (t_atom atom; binbuf_getatom(binbuf, &typePosition, &position, &atom) == 0;) {
        if (atom.a_type != A_SEMI) {
            message.push_back(atom);
        } else {
            messages.push_back(std::exchange(message, {}));
        }
    }
    if (!message.empty()) messages.push_back(std::move(message));
    return messages;
}

/// Whether it reads OBJECT CLASS SELECTOR ARGUMENTS…
bool IsLineFor(t_object* owner, const std::vector<t_atom>& message) {
    return message.size() >= 3 && atom_getobj(&message[0]) == owner && message[1].a_type == A_SYM &&
           atom_getsym(&message[1]) == object_classname(owner) && message[2].a_type == A_SYM;
}

}  // namespace

Preset CollectPreset(t_object* owner, const std::function<void()>& deliverPreset) {
    const ScopedPresetBinbuf binbuf;
    deliverPreset();
    Preset preset;
    for (const std::vector<t_atom>& message : GetMessages(binbuf.Get())) {
        if (IsLineFor(owner, message)) {
            preset.push_back(
                {atom_getsym(&message[1]), atom_getsym(&message[2]), {message.begin() + 3, message.end()}});
            continue;
        }
        const std::string text = AtomsToText(static_cast<long>(message.size()), message.data());
        PostRow(RowKind::Error, object_classname(owner)->s_name, ("can not be recalled: " + text).c_str());
    }
    return preset;
}

std::string FormatPresetLine(const PresetLine& line) {
    std::string text = std::string(line.className->s_name) + " " + line.selector->s_name;
    if (!line.arguments.empty()) {
        text += " " + AtomsToText(static_cast<long>(line.arguments.size()), line.arguments.data());
    }
    return text;
}

}  // namespace velmohost
