#include "diag/to_lower_copy.hpp"

#include <locale>

namespace wivex {

std::string to_lower_copy(std::string text) {
    const std::locale current;
    std::use_facet<std::ctype<char>>(current).tolower(text.data(), text.data() + text.size());
    return text;
}

} // namespace wivex
