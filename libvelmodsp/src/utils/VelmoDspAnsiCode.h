#pragma once

#include "text/VelmoDspString.h"

/// Control sequences that colour text on a terminal and move its cursor (ECMA-48).
///
///     std::cerr << AnsiCode::ForegroundRed << "clipped" << AnsiCode::Reset;
///
/// Each source file that includes this holds constants of its own, so they can be used while other files' globals are
/// being built.
namespace velmodsp::AnsiCode {

const String ForegroundBlack("\033[30m");
const String ForegroundRed("\033[31m");
const String ForegroundGreen("\033[32m");
const String ForegroundYellow("\033[33m");
const String ForegroundBlue("\033[34m");
const String ForegroundMagenta("\033[35m");
const String ForegroundCyan("\033[36m");
const String ForegroundWhite("\033[37m");
const String BackgroundBlack("\033[40m");
const String BackgroundRed("\033[41m");
const String BackgroundGreen("\033[42m");
const String BackgroundYellow("\033[43m");
const String BackgroundBlue("\033[44m");
const String BackgroundMagenta("\033[45m");
const String BackgroundCyan("\033[46m");
const String BackgroundWhite("\033[47m");
const String TextNormal("\033[0m");
const String TextBold("\033[1m");
/// Without the closing "m", which follows from the caller.
const String TextUnder("\033[4");
const String TextBlink("\033[5m");
const String TextReverse("\033[7m");
const String Reset("\033[0m");
/// A new line, back to the line before, and clear from there to the end of the screen.
const String ClearLine("\n\033[F\033[J");

}  // namespace velmodsp::AnsiCode
