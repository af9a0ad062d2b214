#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

#include "batch/SoundFileList.h"

namespace velmohost {

/// How far a batch is, each file weighing as many bytes as it has.
class BatchProgress {
public:
    explicit BatchProgress(const std::vector<ListedFile>& files);

    /// Notes that `fraction` of a file, 0 to 1, is through. Any thread.
    void Set(std::size_t file, double fraction) { fractions[file].store(fraction, std::memory_order_relaxed); }

    /// "[#######             ]  35 %  12 of 30 files". Any thread.
    std::string Text() const;

private:
    std::vector<double> weights;
    double totalWeight = 0.0;
    std::vector<std::atomic<double>> fractions;
};

}  // namespace velmohost
