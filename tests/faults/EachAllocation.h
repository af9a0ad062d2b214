#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <iostream>
#include <limits>
#include <string>

#include "FailingAllocations.h"

namespace velmotest {

/// What became of an operation while an allocation was to fail.
struct Attempted {
    bool hasFailed;  ///< the allocation: false when the operation asks for less than that
    bool isTold;     ///< the operation did not do its work, or not all of it, and said so
};

/// Does something from its preparation to the end of what it leaves, and holds it to what it should have done: either
/// its work, or nothing by half and told. A `FailingAllocations` of the arguments lives during the thing itself.
using Attempt = std::function<Attempted(unsigned long numThatPass, FailingAllocations::Extent extent)>;

/// Has each of the allocations fail in turn, once alone and once with all that follow, and looks for blocks that are
/// left behind. Prints how many failures there were.
inline void FailEachAllocation(const std::string& name, const Attempt& attempt) {
    SCOPED_TRACE(name);
    const auto countLeftBlocks = [&attempt](Attempted& attempted, unsigned long n, FailingAllocations::Extent extent) {
        const long before = NumLivingBlocks();
        attempted = attempt(n, extent);
        return NumLivingBlocks() - before;
    };
    Attempted attempted{};
    long usual = 0;
    for (int i = 0; i < 3; ++i) {  // what is made once and kept is there after the first
        usual = countLeftBlocks(attempted, std::numeric_limits<unsigned long>::max(), FailingAllocations::Once);
    }
    EXPECT_FALSE(attempted.isTold);
    unsigned long numTold = 0, numWithoutEffect = 0;
    for (const auto extent : {FailingAllocations::Once, FailingAllocations::FromThen}) {
        attempted.hasFailed = true;
        for (unsigned long n = 0; attempted.hasFailed && !testing::Test::HasFailure(); ++n) {
            SCOPED_TRACE("allocation " + std::to_string(n) + (extent == FailingAllocations::Once ? "" : " and on"));
            long left = countLeftBlocks(attempted, n, extent);
            // A first failure loads what tells of it, and lists of the host's that stay grow now and then.
            for (int i = 0; i < 2 && left > usual; ++i) left = countLeftBlocks(attempted, n, extent);
            EXPECT_LE(left, usual) << "blocks leak";
            if (attempted.hasFailed) ++(attempted.isTold ? numTold : numWithoutEffect);
        }
    }
    std::cout << name << ": " << numTold + numWithoutEffect << " failures, " << numTold << " told, " << numWithoutEffect
              << " without effect\n";
}

}  // namespace velmotest
