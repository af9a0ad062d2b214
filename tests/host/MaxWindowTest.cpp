#include "window/MaxWindow.h"

#include <gmock/gmock.h>

#include <string>
#include <thread>
#include <vector>

#include "ext.h"
#include "ext_obex.h"
#include "ext_post.h"
#include "support/CapturedWindow.h"

namespace velmohost {
namespace {

using testing::ElementsAre;
using velmotest::CapturedWindow;

TEST(MaxWindow, CutsLongRowsOfOtherThreadsOnly) {
    CapturedWindow window;
    const std::string longText(3 * kMaxWaitingTextBytes, 'x');
    std::thread([&] { PostRow(RowKind::Post, nullptr, longText.c_str()); }).join();
    PostRow(RowKind::Post, nullptr, longText.c_str());
    EXPECT_THAT(window.Take(),
                ElementsAre("[post] " + longText.substr(0, kMaxWaitingTextBytes - 1), "[post] " + longText));
}

TEST(MaxWindow, CountsTheRowsThatAFullQueueLost) {
    CapturedWindow window;
    const auto postRows = [](std::size_t count) {
        std::thread([count] {
            for (std::size_t row = 0; row < count; ++row) PostRow(RowKind::Post, nullptr, std::to_string(row).c_str());
        }).join();
    };
    for (int round = 0; round < 2; ++round) {  // the queue serves again once it was drained
        postRows(kMaxWaitingRows + 3);
        const std::vector<std::string> rows = window.Take();
        ASSERT_EQ(rows.size(), kMaxWaitingRows + 1);
        for (std::size_t row = 0; row < kMaxWaitingRows; ++row) EXPECT_EQ(rows[row], "[post] " + std::to_string(row));
        EXPECT_EQ(rows.back(),
                  "[warning] 3 rows were lost: more came from the audio thread than the Max window can hold");
    }
    postRows(kMaxWaitingRows);
    EXPECT_EQ(window.Take().size(), kMaxWaitingRows);
}

TEST(ThreadsMaxWindow, LosesAndMixesUpNothing) {
    constexpr int kThreads = 4, kRows = 20000;
    std::vector<int> nextOf(kThreads, 0);
    std::size_t numShown = 0, numLost = 0;
    SetMaxWindowSink([&](RowKind kind, const std::string& name, const std::string& text) {
        if (kind == RowKind::Warning) {
            numLost += std::stoul(text);
            return;
        }
        int& next = nextOf.at(std::stoul(name));
        EXPECT_GE(std::stoi(text), next) << "thread " << name;
        next = std::stoi(text) + 1;
        ++numShown;
    });
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([thread] {
            const std::string name = std::to_string(thread);
            for (int row = 0; row < kRows; ++row) PostRow(RowKind::Post, name.c_str(), std::to_string(row).c_str());
        });
    }
    for (int round = 0; round < 1000; ++round) DrainMaxWindow();
    for (std::thread& thread : threads) thread.join();
    DrainMaxWindow();
    SetMaxWindowSink({});
    EXPECT_EQ(numShown + numLost, static_cast<std::size_t>(kThreads) * kRows);
    EXPECT_GE(numShown, kMaxWaitingRows);
}

TEST(Posting, TagsRowsWithTheObjectsClassInTheOrderOfAllThreads) {
    t_class* const c = class_new("poster", nullptr, nullptr, static_cast<long>(sizeof(t_object)), nullptr, 0);
    auto* const x = static_cast<t_object*>(object_alloc(c));
    t_atom number;
    atom_setlong(&number, 7);
    CapturedWindow window;
    object_post(x, "%d of %s", 3, "four");
    object_warn(x, "w");
    object_error(nullptr, "e %g", 0.5);
    object_bug(x, "two\nlines\n");
    object_poststring(x, POSTROW_ERROR, "100 %s");
    poststring("composed of");
    postatom(&number);
    post("p");
    std::thread([x] { object_error(x, "from %s", "outside"); }).join();
    error("last");
    EXPECT_THAT(window.Take(), ElementsAre("[post] poster: 3 of four", "[warning] poster: w", "[error] e 0.5",
                                           "[bug] poster: two lines", "[error] poster: 100 %s", "[post] composed of 7",
                                           "[post] p", "[error] poster: from outside", "[error] last"));
    object_free(x);
    class_free(c);
}

}  // namespace
}  // namespace velmohost
