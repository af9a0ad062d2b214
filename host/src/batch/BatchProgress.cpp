#include "batch/BatchProgress.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "core/PathText.h"

namespace velmohost {
namespace {

/// At least 1, so that missing files count as well.
double Weight(const std::string& path) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(SystemPath(path), error);
    return error ? 1.0 : std::max(1.0, static_cast<double>(size));
}

}  // namespace

BatchProgress::BatchProgress(const std::vector<ListedFile>& files) : fractions(files.size()) {
    for (const ListedFile& file : files) weights.push_back(Weight(file.path));
    for (const double weight : weights) totalWeight += weight;
}

std::string BatchProgress::Text() const {
    double done = 0.0;
    std::size_t numDone = 0;
    for (std::size_t i = 0; i < weights.size(); ++i) {
        const double fraction = fractions[i].load(std::memory_order_relaxed);
        done += fraction * weights[i];
        if (fraction >= 1.0) ++numDone;
    }
    constexpr int kBarColumns = 20;
    const double ratio = totalWeight > 0.0 ? done / totalWeight : 1.0;
    const auto numMarks = static_cast<std::size_t>(ratio * kBarColumns);
    std::array<char, 100> text{};
    std::snprintf(text.data(), text.size(), "[%-*s] %3.0f %%  %zu of %zu files", kBarColumns,
                  std::string(numMarks, '#').c_str(), 100.0 * ratio, numDone, weights.size());
    return text.data();
}

}  // namespace velmohost
