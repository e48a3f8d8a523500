// SPDX-License-Identifier: Apache-2.0
// What every fuzz target of the report asks for.
#pragma once

#include "writers/html_writer.hpp"
#include "writers/junit_writer.hpp"

#include <cstdlib>
#include <pugixml.hpp>
#include <string>

namespace report_fuzz {

inline void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

/// A page, or another text in XML.
inline void check_well_formed(const std::string& text) {
    pugi::xml_document document;
    require(document.load_buffer(text.data(), text.size(),
                                 pugi::parse_default | pugi::parse_doctype, pugi::encoding_utf8));
}

/// The page and junit.xml are well-formed.
inline void check_markup(const wivex::report::Log& log) {
    check_well_formed(wivex::report::write_html(log));
    check_well_formed(wivex::report::write_junit(log));
}

} // namespace report_fuzz
