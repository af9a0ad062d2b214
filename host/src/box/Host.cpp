#include "box/Host.h"

#include <filesystem>

#include "box/DynamicLibrary.h"
#include "core/PathText.h"

namespace velmohost {
namespace {

std::vector<std::filesystem::path> SearchOrder(const std::vector<std::string>& pluginFolders) {
    std::vector<std::filesystem::path> folders;
    folders.reserve(pluginFolders.size());
    for (const std::string& folder : pluginFolders) folders.push_back(SystemPath(folder));
    for (auto& folder : GetPackageFolders(GetProgramFolder())) folders.push_back(std::move(folder));
    return folders;
}

}  // namespace

Host::Host(const std::vector<std::string>& pluginFolders) : loader(SearchOrder(pluginFolders)) {}

}  // namespace velmohost
