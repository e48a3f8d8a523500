// SPDX-License-Identifier: Apache-2.0
#include "writers/html_text.hpp"

namespace wivex::report {

std::string escaped(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (const char c : text) {
        switch (c) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += "&quot;";
            break;
        case '\'':
            result += "&#39;";
            break;
        default:
            result += c;
        }
    }
    return result;
}

std::string with_code(std::string_view text) {
    std::string result;
    bool code = false;
    while (!text.empty()) {
        const std::size_t quote = text.find('`');
        result += escaped(text.substr(0, quote));
        if (quote == std::string_view::npos) {
            break;
        }
        code = !code;
        result += code ? "<code>" : "</code>";
        text.remove_prefix(quote + 1);
    }
    return result + (code ? "</code>" : "");
}

} // namespace wivex::report
