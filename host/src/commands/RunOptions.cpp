#include "commands/RunOptions.h"

#include <filesystem>
#include <stdexcept>

#include "commands/UsageError.h"
#include "core/Dialogs.h"
#include "core/PathText.h"

namespace velmohost {

void ApplySaveAsAnswer(const RunOptions& options) {
    const std::string answer = options.saveAs.value_or("");
    if (options.saveAs && answer.empty()) throw UsageError("--save-as: the path is empty");
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::absolute(PathFromText(answer)).parent_path();
    if (options.saveAs && !std::filesystem::is_directory(folder, error)) {
        throw std::runtime_error("cannot save as " + answer + ": there is no folder " + TextFromPath(folder));
    }
    SetSaveAsAnswer(answer);
}

}  // namespace velmohost
