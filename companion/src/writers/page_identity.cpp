// SPDX-License-Identifier: Apache-2.0
#include "writers/page_identity.hpp"

#include "writers/html_text.hpp"
#include "writers/identity_words.hpp"
#include "writers/page.hpp"

namespace wivex::report {

std::string identity_part(const Log& log) {
    std::string markup;
    for (const std::string& warning : identity_warnings(log)) {
        markup += element("p", {{"class", "bad"}, {"role", "alert"}},
                          "WARNING: " + escaped(warning) + ".") +
                  "\n";
    }
    std::string facts;
    for (const auto& [name, value] : known_facts(log)) {
        facts += element("dt", escaped(name)) + element("dd", escaped(value)) + "\n";
    }
    if (!facts.empty()) {
        markup +=
            element("dl", {{"class", "facts identity"}, {"id", "identity"}}, "\n" + facts) + "\n";
    }
    return markup;
}

} // namespace wivex::report
