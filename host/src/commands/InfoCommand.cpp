#include "commands/InfoCommand.h"

#include <cstdio>
#include <memory>

#include "box/Box.h"
#include "box/Host.h"
#include "commands/InfoText.h"
#include "commands/ObjectDescription.h"
#include "commands/WindowOutput.h"
#include "window/MaxWindow.h"

namespace velmohost {
namespace {

/// Keeps the rows of the Max window off the standard output, so that it holds nothing but the answer.
void SendRowsToStandardError() {
    SetMaxWindowSink([](RowKind kind, const std::string& objectName, const std::string& text) {
        std::fprintf(stderr, "%s\n", FormatRow(kind, objectName, text).c_str());
    });
}

}  // namespace

int ShowInfo(const InfoOptions& options) {
    const WindowOutput window([] {});
    if (options.asJson) SendRowsToStandardError();
    Host host(options.paths);
    const std::unique_ptr<Box> box = Box::Create(host, options.boxText);
    if (!box) return 1;
    const ObjectDescription description = Describe(*box);
    const std::string text = options.asJson ? FormatInfoAsJson(description) : FormatInfo(description);
    std::fputs(text.c_str(), stdout);
    return 0;
}

}  // namespace velmohost
