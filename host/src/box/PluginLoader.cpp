#include "box/PluginLoader.h"

#include <optional>
#include <system_error>
#include <utility>

#include "box/DynamicLibrary.h"
#include "core/Classes.h"
#include "core/PathText.h"
#include "core/PluginCall.h"
#include "window/MaxWindow.h"

namespace velmohost {
namespace {

namespace fs = std::filesystem;

/// A class name is one file's name: one that leads into other folders names no class.
bool IsFileName(const std::string& name) { return !name.empty() && SystemPath(name).filename() == SystemPath(name); }

std::optional<fs::path> FindPlugin(const std::vector<fs::path>& folders, const std::string& name) {
    if (!IsFileName(name)) return std::nullopt;
    for (const fs::path& folder : folders) {
        std::error_code error;
        fs::path file = folder / SystemPath(name + VELMO_EXTERNAL_SUFFIX);
        if (fs::exists(file, error)) return file;
    }
    return std::nullopt;
}

/// Runs the entry point: `ext_main`, which today's hosts call, or `main` of plug-ins from before.
bool RunEntryPoint(const DynamicLibrary& library) {
    if (void* const extMain = library.FindFunction("ext_main")) {
        CallPlugin<void>(reinterpret_cast<method>(extMain), static_cast<void*>(nullptr));
        return true;
    }
    if (void* const main = library.FindFunction("main")) {
        CallPlugin<int>(reinterpret_cast<method>(main));
        return true;
    }
    return false;
}

/// Loads a plug-in and has it register its classes; the reason when that fails.
std::string LoadPlugin(const fs::path& file) {
    std::string reason;
    const DynamicLibrary library = DynamicLibrary::Load(fs::absolute(GetPluginBinary(file)), reason);
    if (!library) return "could not load " + TextFromPath(file) + ": " + reason;
    if (!RunEntryPoint(library)) return TextFromPath(file) + " is no plug-in: it has neither ext_main nor main";
    return "";
}

}  // namespace

PluginLoader::PluginLoader(std::vector<fs::path> searched) : folders(std::move(searched)) {}

t_class* PluginLoader::FindClass(const std::string& name) {
    if (t_class* const known = velmohost::FindClass("box", name)) return known;
    const std::optional<fs::path> file = FindPlugin(folders, name);
    if (!file) {
        PostRow(RowKind::Error, name.c_str(), "No such object");
        return nullptr;
    }
    const std::string reason = LoadPlugin(*file);
    if (!reason.empty()) {
        PostRow(RowKind::Error, name.c_str(), reason.c_str());
        return nullptr;
    }
    t_class* const loaded = velmohost::FindClass("box", name);
    if (loaded == nullptr)
        PostRow(RowKind::Error, name.c_str(), (TextFromPath(*file) + " brings no such object").c_str());
    return loaded;
}

std::vector<fs::path> GetPackageFolders(const fs::path& programFolder) {
    return {programFolder / u8"package" / u8"externals", programFolder / u8"externals"};
}

}  // namespace velmohost
