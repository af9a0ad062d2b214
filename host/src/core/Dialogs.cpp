#include "core/Dialogs.h"

#include "ext.h"

namespace velmohost {
namespace {

std::string& Answer() {
    static std::string answer;
    return answer;
}

constexpr short cancelled = 1;

/// @returns 0 when accepted: `name` and `folder` tell the answer, `type` the first of the types asked for
short Ask(char* name, short* folder, t_fourcc* type, const t_fourcc* types, short numTypes) {
    if (name == nullptr || folder == nullptr || Answer().empty()) return cancelled;
    if (path_frompathname(Answer().c_str(), folder, name) != MAX_ERR_NONE) return cancelled;
    if (type != nullptr && types != nullptr && numTypes > 0) *type = types[0];
    return 0;
}

}  // namespace

void SetDialogAnswer(const std::string& path) { Answer() = path; }

}  // namespace velmohost

using namespace velmohost;

extern "C" {

short saveasdialog_extended(char* name, short* vol, t_fourcc* type, t_fourcc* typelist, short numtypes) {
    return Ask(name, vol, type, typelist, numtypes);
}

short saveas_dialog(char* name, short* path, t_fourcc* type) { return Ask(name, path, type, nullptr, 0); }

void saveas_promptset(const char*) {}

short open_dialog(char* name, short* volptr, t_fourcc* typeptr, t_fourcc* types, short ntypes) {
    return Ask(name, volptr, typeptr, types, ntypes);
}

}  // extern "C"
