#include "commands/RepairOutputs.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "commands/UsageError.h"
#include "core/PathText.h"

namespace velmohost {
namespace {

namespace fs = std::filesystem;

bool IsFolder(const std::string& path) {
    std::error_code error;
    return fs::is_directory(SystemPath(path), error);
}

/// Whether -o means a folder: there is one of that name, it is written as one, or several files may have to go there.
bool NamesFolder(const RepairOptions& options) {
    return IsFolder(*options.output) || !SystemPath(*options.output).has_filename() || options.files.size() > 1 ||
           IsFolder(options.files.front());
}

void CheckFolder(const std::string& output) {
    std::error_code error;
    if (fs::exists(SystemPath(output), error) && !IsFolder(output)) {
        throw UsageError("-o: " + output + " is a file; several files need a folder");
    }
}

void CheckSameExtension(const std::string& source, const std::string& output) {
    const fs::path wanted = SystemPath(source).extension();
    if (SystemPath(output).extension() != wanted) {
        throw UsageError("-o: a repaired file stays what it is; give it the extension \"" + TextFromPath(wanted) +
                         "\"");
    }
}

std::string BesideSource(const fs::path& source) {
    fs::path name = source.stem();
    name += SystemPath("-repaired");
    name += source.extension();
    return TextFromPath(source.parent_path() / name);
}

}  // namespace

std::vector<std::string> ChooseOutputs(const RepairOptions& options, const std::vector<ListedFile>& files) {
    const bool intoFolder = options.output && NamesFolder(options);
    if (intoFolder) CheckFolder(*options.output);
    if (options.output && !intoFolder) CheckSameExtension(files.front().path, *options.output);
    std::vector<std::string> outputs;
    for (const ListedFile& file : files) {
        if (!options.output) {
            outputs.push_back(BesideSource(SystemPath(file.path)));
        } else {
            outputs.push_back(intoFolder ? TextFromPath(SystemPath(*options.output) / SystemPath(file.relative))
                                         : *options.output);
        }
    }
    return outputs;
}

}  // namespace velmohost
