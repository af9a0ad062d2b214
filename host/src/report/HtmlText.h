#pragma once

#include <string>

namespace velmohost {

/// Plain text as it stands in a page, between tags or within a quoted attribute. Bytes that are no UTF-8 stay as they
/// are; browsers show a replacement character.
inline std::string HtmlText(const std::string& text) {
    std::string html;
    for (const char c : text) {
        switch (c) {
            case '&':
                html += "&amp;";
                break;
            case '<':
                html += "&lt;";
                break;
            case '>':
                html += "&gt;";
                break;
            case '"':
                html += "&quot;";
                break;
            case '\'':
                html += "&#39;";
                break;
            default:
                html += c;
        }
    }
    return html;
}

}  // namespace velmohost
