#include "commands/WindowOutput.h"

#include <string>
#include <utility>

#include "core/AtomText.h"
#include "core/Objects.h"
#include "ext_obex.h"
#include "window/MainThread.h"
#include "window/MaxWindow.h"

namespace velmohost {
namespace {

bool IsDumpOutlet(t_object* owner, t_outlet* outlet) {
    t_object* dumpOutlet = nullptr;
    return object_obex_lookup(owner, gensym("dumpout"), &dumpOutlet) == MAX_ERR_NONE && dumpOutlet == outlet;
}

std::string FormatDump(t_symbol* selector, long ac, const t_atom* av) {
    std::string line = std::string("[dumpout] ") + selector->s_name;
    if (ac > 0) line.append(" ").append(AtomsToText(ac, av));
    return line;
}

}  // namespace

WindowOutput::WindowOutput(std::function<void()> makeRoomForLine) : makeRoom(std::move(makeRoomForLine)) {
    SetMaxWindowSink([this](RowKind kind, const std::string& objectName, const std::string& text) {
        makeRoom();
        PrintRow(kind, objectName, text);
    });
    SetOutletListener(
        [this](t_object* owner, t_outlet* outlet, unsigned, t_symbol* selector, long ac, const t_atom* av) {
            if (!IsMainThread()) {
                return PostRow(RowKind::Bug, object_classname(owner)->s_name, "outlets are not for the audio thread");
            }
            if (IsDumpOutlet(owner, outlet)) ShowDump(selector, ac, av);
        });
}

void WindowOutput::ShowDump(t_symbol* selector, long ac, const t_atom* av) {
    DrainMaxWindow();  // what waits was posted earlier
    makeRoom();
    PrintWindowLine(FormatDump(selector, ac, av));
    if (selector == gensym("dictionary") && ac == 1 && av->a_type == A_SYM) lastDictionary.Show(atom_getsym(av));
}

WindowOutput::~WindowOutput() {
    DrainMaxWindow();
    SetOutletListener({});
    SetMaxWindowSink({});
}

}  // namespace velmohost
