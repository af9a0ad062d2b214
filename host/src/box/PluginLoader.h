#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "ext.h"

namespace velmohost {

/// Finds classes by name, and loads the plug-in that brings a class which is not known yet. Main thread.
class PluginLoader {
public:
    /// @param folders searched in this order for `<class><suffix>`
    explicit PluginLoader(std::vector<std::filesystem::path> folders);

    /// The class of namespace "box" of that name, from its plug-in if need be. Null after an error row that tells why:
    /// no such object in any folder, a file that cannot be loaded, has no entry point, or registers no class of that
    /// name.
    t_class* FindClass(const std::string& name);

    const std::vector<std::filesystem::path>& Folders() const { return folders; }

private:
    const std::vector<std::filesystem::path> folders;
};

/// The externals folders that belong to a program in `programFolder`: of the package built beside it, and beside it.
std::vector<std::filesystem::path> GetPackageFolders(const std::filesystem::path& programFolder);

}  // namespace velmohost
