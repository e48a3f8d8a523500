// SPDX-License-Identifier: Apache-2.0
#include "writers/page.hpp"

#include "common/words.hpp"

namespace wivex::report {

std::string card(std::string_view id, std::string_view title, const std::string& inner) {
    return R"(<section class="card" id=")" + std::string(id) + "\">\n<h3>" + std::string(title) +
           "</h3>\n" + inner + "</section>\n";
}

std::string plural_iterations(std::uint32_t count) {
    return count_text(count, "iteration", "iterations");
}

std::string paragraph(std::string_view kind, const std::string& markup) {
    return "<p class=\"" + std::string(kind) + "\">" + markup + "</p>\n";
}

} // namespace wivex::report
