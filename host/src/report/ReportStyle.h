#pragma once

namespace velmohost {

/// The report's style sheet.
extern const char* const kReportStyle;

}  // namespace velmohost
