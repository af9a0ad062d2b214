#pragma once

#include <memory>
#include <optional>
#include <utility>

#include "Fuzzing.h"
#include "VelmoHost.h"
#include "support/DeliberateLeak.h"
#include "tesk_fixnan.h"

/// The host with the object's class in it, and the rows of the Max window.
class FuzzedHost {
public:
    FuzzedHost() {
        // Where the reference page goes.
        setenv("home", Workplace().Path().c_str(), 1);
        velmohost::SetMaxWindowSink([this](velmohost::RowKind kind, const std::string& name, const std::string& text) {
            rows.push_back(velmohost::FormatRow(kind, name, text));
        });
        tesk_fixnan_setup();
    }

    /// A constructor that gives up leaves its record behind on purpose.
    std::unique_ptr<velmohost::Box> Create(const std::string& boxText) {
        const velmotest::DeliberateLeak leak;
        return velmohost::Box::Create(host, boxText);
    }

    std::vector<std::string> TakeRows() { return std::exchange(rows, {}); }

private:
    velmohost::Host host;
    std::vector<std::string> rows;
};

inline FuzzedHost& TheHost() {
    static FuzzedHost host;
    return host;
}

/// The one file that messages may write to: whatever the text of an "exportdict", its path is replaced by this one.
inline const std::string& ExportPath() {
    static const std::string path = Workplace() / "state.json";
    return path;
}

inline std::string WithinWorkplace(const std::string& messageText) {
    const std::optional<velmohost::MessageText> message = velmohost::ParseMessageText(messageText);
    const bool isExport = message && message->selector == gensym("exportdict") && !message->arguments.empty();
    return isExport ? "exportdict " + ExportPath() : messageText;
}
