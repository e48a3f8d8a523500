// SPDX-License-Identifier: Apache-2.0
#include "writers/element.hpp"

#include "writers/html_text.hpp"

namespace wivex::report {

std::string element(std::string_view name, const Attributes& attributes, std::string_view markup) {
    std::string text = "<" + std::string(name);
    for (const Attribute& attribute : attributes) {
        text += " " + std::string(attribute.name) + "=\"" + escaped(attribute.value) + "\"";
    }
    text += ">";
    text += markup;
    return text + "</" + std::string(name) + ">";
}

std::string element(std::string_view name, std::string_view markup) {
    return element(name, Attributes(), markup);
}

} // namespace wivex::report
