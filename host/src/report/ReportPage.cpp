#include "report/ReportPage.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "batch/ScanText.h"
#include "commands/Notice.h"
#include "report/HtmlText.h"
#include "report/ReportStyle.h"
#include "report/WaveformSvg.h"

namespace velmohost {
namespace {

using Status = FileOutcome::Status;

/// The mark of a channel's figure, and of the names in it.
std::string FigureId(std::size_t file, unsigned channel) {
    return "f" + std::to_string(file + 1) + "c" + std::to_string(channel + 1);
}

std::string Cell(const std::string& name, const std::string& html) {
    return "<td data-name=\"" + name + "\">" + html + "</td>";
}

std::string Cell(const std::string& name, std::uint64_t number) {
    return Cell(name, number == 0 ? "" : std::to_string(number));
}

constexpr const char* kTableHead =
    "<table>\n<thead><tr><th>Channel</th><th>NaN</th><th>+Inf</th><th>−Inf</th><th>Subnormal</th>"
    "<th>First bad sample</th><th>Time</th><th>Longest run</th></tr></thead>\n";
constexpr const char* kColumnsSpanned = "colspan=\"8\"";

std::string FormatFileRow(const FileOutcome& outcome) {
    std::string row = std::string("<tr class=\"file\"><th ") + kColumnsSpanned + ">" + HtmlText(outcome.path);
    switch (outcome.status) {
        case Status::Failed:
            return row + " <span class=\"failed\">failed: " + HtmlText(outcome.error) + "</span></th></tr>\n";
        case Status::Clean:
            row += " <span class=\"faint\">clean</span>";
            break;
        case Status::Damaged:
        case Status::Repaired:
            row += " <span class=\"faint\">→ " + HtmlText(outcome.output) + "</span>";
            break;
    }
    return row + " <span class=\"faint\">(" + HtmlText(FormatFormat(outcome.scan)) + ")</span></th></tr>\n";
}

std::string FormatChannelRow(const FileScan& scan, unsigned channel, const std::string& figure) {
    const BadSamples& bad = scan.channels[channel];
    const std::string number = std::to_string(channel + 1);
    std::string row = "<tr>";
    row += Cell("Channel", figure.empty() ? number : "<a href=\"#" + figure + "\">" + number + "</a>");
    row += Cell("NaN", bad.numNaN) + Cell("+Inf", bad.numPositiveInfinity) + Cell("−Inf", bad.numNegativeInfinity);
    row += Cell("Subnormal", bad.numSubnormal);
    row += Cell("First bad sample", std::to_string(*bad.first));
    row += Cell("Time", FormatTime(static_cast<double>(*bad.first) / scan.samplerate));
    return row + Cell("Longest run", bad.longestRun) + "</tr>\n";
}

/// The rows of a file: one for itself, one for each damaged channel, one for all others together.
std::string FormatFileRows(std::size_t file, const FileOutcome& outcome, const std::vector<ChannelPicture>& pictures) {
    std::string rows = "<tbody>\n" + FormatFileRow(outcome);
    const FileScan& scan = outcome.scan;
    std::size_t numClean = 0;
    for (unsigned c = 0; c < scan.channels.size(); ++c) {
        if (scan.channels[c].NumBad() == 0) {
            ++numClean;
            continue;
        }
        const bool isPictured = std::any_of(pictures.begin(), pictures.end(),
                                            [c](const ChannelPicture& picture) { return picture.Channel() == c; });
        rows += FormatChannelRow(scan, c, isPictured ? FigureId(file, c) : "");
    }
    if (!scan.IsClean() && numClean > 0) {
        rows += std::string("<tr><td class=\"none\" ") + kColumnsSpanned + ">" + Count(numClean, "other channel") +
                ": clean</td></tr>\n";
    }
    return rows + "</tbody>\n";
}

/// A magnitude as a level: "0.5 (-6.0 dB)".
std::string FormatLevel(float magnitude) {
    std::array<char, 64> text{};
    const double level = std::round(200.0 * std::log10(static_cast<double>(magnitude))) / 10.0;
    std::snprintf(text.data(), text.size(), "%.3g (%+.1f dB)", static_cast<double>(magnitude), level + 0.0);  // no "-0"
    return magnitude > 0.0f ? text.data() : "0";
}

/// The magnitude at the border of a picture: the peak, but full scale at most, lest the swing of a filter that blows up
/// flatten all else.
float ChooseScale(const WaveformView& view) {
    const float peak = view.Peak();
    return peak > 0.0f ? std::min(peak, 1.0f) : 1.0f;
}

std::string FormatView(const WaveformView& view, const FileScan& scan, const std::string& range) {
    const float scale = ChooseScale(view);
    const auto time = [&scan](std::uint64_t sample) {
        return FormatTime(static_cast<double>(sample) / scan.samplerate);
    };
    return "<div class=\"view\">\n<p class=\"state\">Before, " + range + ", up to ±" + FormatLevel(scale) + "</p>\n" +
           DrawWaveform(view, RepairState::Before, scale, "Waveform before the repair, " + range) +
           "<p class=\"state\">After</p>\n" +
           DrawWaveform(view, RepairState::After, scale, "Waveform after the repair, " + range) +
           "<div class=\"axis\"><span>" + time(view.Start()) + "</span><span>" + time(view.Start() + view.Length()) +
           "</span></div>\n</div>\n";
}

std::string FormatZoomButton(const std::string& figure, int view, const std::string& text) {
    const std::string id = figure + "v" + std::to_string(view);
    return "<input type=\"radio\" name=\"" + figure + "\" id=\"" + id + "\"" + (view == 1 ? " checked" : "") +
           "><label for=\"" + id + "\">" + text + "</label>\n";
}

std::string FormatFigure(std::size_t file, const FileScan& scan, const ChannelPicture& picture) {
    const unsigned channel = picture.Channel();
    const BadSamples& bad = scan.channels[channel];
    const std::string id = FigureId(file, channel);
    std::string figure = "<figure id=\"" + id + "\">\n<figcaption><b>Channel " + std::to_string(channel + 1) + "</b> " +
                         Count(bad.NumBad(), "bad sample") + ", the first at " + FormatPosition(*bad.first, scan) +
                         "; loudest good sample " + FormatLevel(picture.Whole().Peak()) + "</figcaption>\n";
    figure += FormatZoomButton(id, 1, "Whole file") + FormatZoomButton(id, 2, "Around the first incident") +
              FormatZoomButton(id, 3, "Sample by sample");
    figure += FormatView(picture.Whole(), scan, "whole file") +
              FormatView(picture.Around(), scan, "around the first incident") +
              FormatView(picture.Samples(), scan,
                         "samples " + std::to_string(picture.Samples().Start()) + " to " +
                             std::to_string(picture.Samples().Start() + picture.Samples().Length() - 1));
    return figure + "</figure>\n";
}

std::string FormatFigures(const std::vector<FileOutcome>& outcomes,
                          const std::vector<std::vector<ChannelPicture>>& pictures) {
    std::string figures;
    for (std::size_t file = 0; file < outcomes.size(); ++file) {
        if (pictures[file].empty()) continue;
        figures += "<section>\n<h2>" + HtmlText(outcomes[file].path) + "</h2>\n";
        for (const ChannelPicture& picture : pictures[file]) {
            figures += FormatFigure(file, outcomes[file].scan, picture);
        }
        figures += "</section>\n";
    }
    return figures;
}

/// How many damaged channels have a picture, when not all of them have.
std::string FormatMissingPictures(const std::vector<FileOutcome>& outcomes,
                                  const std::vector<std::vector<ChannelPicture>>& pictures) {
    std::size_t numDamaged = 0, numPictures = 0;
    for (std::size_t file = 0; file < outcomes.size(); ++file) {
        numPictures += pictures[file].size();
        if (outcomes[file].status != Status::Repaired) continue;
        for (const BadSamples& channel : outcomes[file].scan.channels) numDamaged += channel.NumBad() > 0;
    }
    if (numPictures == numDamaged) return "";
    return "<p>Waveforms are shown for " + std::to_string(numPictures) + " of " + Count(numDamaged, "damaged channel") +
           ".</p>\n";
}

}  // namespace

std::string FormatReport(const ReportHeading& heading, const std::vector<FileOutcome>& outcomes,
                         const std::vector<std::vector<ChannelPicture>>& pictures) {
    std::string page =
        "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
        "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>Repair report</title>\n"
        "<style>" +
        std::string(kReportStyle) + "</style>\n</head>\n<body>\n<h1>Repair report</h1>\n<p>" + FormatSum(outcomes) +
        "<br><span class=\"faint\">" + HtmlText(heading.date) + "; bad samples were replaced by " +
        HtmlText(heading.replacement) + "</span></p>\n" + kTableHead;
    for (std::size_t file = 0; file < outcomes.size(); ++file) {
        page += FormatFileRows(file, outcomes[file], pictures[file]);
    }
    page += "</table>\n";
    const std::string figures = FormatFigures(outcomes, pictures);
    if (!figures.empty()) {
        page +=
            "<p class=\"key\"><span>signal</span><span class=\"bad\">bad samples</span>"
            "<span class=\"repaired\">repaired stretches</span></p>\n";
    }
    return page + FormatMissingPictures(outcomes, pictures) + figures + "</body>\n</html>\n";
}

}  // namespace velmohost
