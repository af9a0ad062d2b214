#include "core/Dialogs.h"

#include <filesystem>

#include "core/OutOfMemory.h"
#include "core/PathText.h"
#include "ext.h"

namespace velmohost {
namespace {

std::string& SaveAsAnswer() {
    static std::string answer;
    return answer;
}

constexpr short cancelled = 1;

/// @returns 0 when accepted: `name` and `folder` tell the answer, `type` the first of the types asked for
short AskForNewFile(char* name, short* folder, t_fourcc* type, const t_fourcc* types, short numTypes) try {
    if (name == nullptr || folder == nullptr || SaveAsAnswer().empty()) return cancelled;
    std::string path = SaveAsAnswer();
    std::error_code error;
    if (std::filesystem::is_directory(PathFromText(path), error)) path += std::string("/") + name;
    if (path_frompathname(path.c_str(), folder, name) != MAX_ERR_NONE) return cancelled;
    if (type != nullptr && types != nullptr && numTypes > 0) *type = types[0];
    return 0;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

}  // namespace

void SetSaveAsAnswer(const std::string& path) { SaveAsAnswer() = path; }

}  // namespace velmohost

using namespace velmohost;

extern "C" {

short saveasdialog_extended(char* name, short* vol, t_fourcc* type, t_fourcc* typelist, short numtypes) {
    return AskForNewFile(name, vol, type, typelist, numtypes);
}

short saveas_dialog(char* name, short* path, t_fourcc* type) { return AskForNewFile(name, path, type, nullptr, 0); }

void saveas_promptset(const char*) {}

short open_dialog(char*, short*, t_fourcc*, t_fourcc*, short) { return cancelled; }

}  // extern "C"
