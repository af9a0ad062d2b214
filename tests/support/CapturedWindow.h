#pragma once

#include <string>
#include <utility>
#include <vector>

#include "window/MaxWindow.h"

namespace velmotest {

/// Collects the rows of the Max window as the standard output would show them, for as long as it lives. Main thread.
class CapturedWindow {
public:
    CapturedWindow() {
        velmohost::SetMaxWindowSink([this](velmohost::RowKind kind, const std::string& name, const std::string& text) {
            rows.push_back(velmohost::FormatRow(kind, name, text));
        });
    }
    ~CapturedWindow() { velmohost::SetMaxWindowSink({}); }
    CapturedWindow(const CapturedWindow&) = delete;
    CapturedWindow& operator=(const CapturedWindow&) = delete;

    /// The rows since the last call, those of other threads included.
    std::vector<std::string> Take() {
        velmohost::DrainMaxWindow();
        return std::exchange(rows, {});
    }

private:
    std::vector<std::string> rows;
};

}  // namespace velmotest
