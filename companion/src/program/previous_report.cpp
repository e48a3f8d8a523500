// SPDX-License-Identifier: Apache-2.0
#include "program/previous_report.hpp"

#include "common/printable.hpp"
#include "reader/json_walker.hpp"

#include <fstream>
#include <vector>

namespace wivex::report {

namespace {

// The identity stands near the begin of the document.
constexpr std::streamsize most_read = 65536;
constexpr std::size_t longest_value = 256;

// Ends the walk behind the identity, so that the rest is never looked at.
class IdentityFinder : public JsonWalker {
public:
    explicit IdentityFinder(Identity& identity) : identity_(identity) {}

protected:
    bool take_number(std::string_view /*path*/, double /*value*/) override {
        return true;
    }
    bool take_text(std::string_view path, std::string_view text) override {
        if (text.size() > longest_value || !is_printable(text)) {
            return true;
        }
        if (path == "/identity/serial") {
            identity_.previous_serial = text;
        } else if (path == "/identity/mac") {
            identity_.previous_mac = mac_address(text);
        }
        return true;
    }
    bool end_of(std::string_view path) override {
        return path != "/identity";
    }

private:
    Identity& identity_;
};

} // namespace

void take_previous_report(std::string_view report, Identity& identity) {
    IdentityFinder finder(identity);
    // It never reads to the end, so the result says nothing.
    static_cast<void>(finder.walk(report));
}

void read_previous_report(const std::string& folder, Identity& identity) {
    std::ifstream file(folder + "/run.json", std::ios::binary);
    std::vector<char> begin(most_read);
    file.read(begin.data(), most_read);
    take_previous_report({begin.data(), static_cast<std::size_t>(file.gcount())}, identity);
}

} // namespace wivex::report
