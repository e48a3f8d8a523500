// SPDX-License-Identifier: Apache-2.0
#include "program/limit_options.hpp"

#include "common/files.hpp"
#include "model/limit_text.hpp"

namespace wivex::report {

namespace {

constexpr std::size_t largest_file = 65536;

} // namespace

std::string read_limits(const std::vector<std::string>& texts, const std::string& file,
                        std::vector<Limit>& limits) {
    for (const std::string& text : texts) {
        std::string problem = add_limit(limits, text);
        if (!problem.empty()) {
            return problem;
        }
    }
    if (file.empty()) {
        return {};
    }
    std::string content;
    std::string problem = read_whole_file(file, largest_file, content);
    return problem.empty() ? add_limits_of_file(limits, content, file) : problem;
}

} // namespace wivex::report
