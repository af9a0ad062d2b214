#include "commands/RunOptions.h"

#include <filesystem>
#include <stdexcept>

#include "commands/UsageError.h"
#include "core/Dialogs.h"
#include "core/PathText.h"

namespace velmohost {

void ApplySaveAsAnswer(const RunOptions& options) {
    if (!options.saveAs) return SetSaveAsAnswer("");
    if (options.saveAs->empty()) throw UsageError("--save-as: the path is empty");
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::absolute(PathFromText(*options.saveAs)).parent_path();
    if (!std::filesystem::is_directory(folder, error)) {
        throw std::runtime_error("cannot save as " + *options.saveAs + ": there is no folder " + TextFromPath(folder));
    }
    SetSaveAsAnswer(*options.saveAs);
}

}  // namespace velmohost
