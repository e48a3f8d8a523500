// SPDX-License-Identifier: Apache-2.0
// What the driver's register files may yield, and the address bytes that are taken from it.

#include "diag/mac_text.hpp"
#include "diag/register_files.hpp"
#include "require.hpp"

#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using fuzz::require;
    const std::string_view text = fuzz::text_of(data, size);
    const wivex::RegisterDump dump = wivex::parse_register_dump(text);
    require(dump.line.size() <= 20);
    require(dump.line.size() <= static_cast<std::size_t>(dump.length) && dump.length <= 20);
    require(text.starts_with(dump.line));
    require(dump.line.find_first_of(std::string_view("\n\0", 2)) == std::string::npos);

    const std::size_t end = text.find_first_of(std::string_view("\n\0", 2));
    const std::size_t length = end == std::string_view::npos ? text.size() : end;
    require(dump.complete() == (length == 19));
    if (!dump.complete()) {
        return 0;
    }
    require(dump.word() == text.substr(11, 8));
    std::string mac;
    wivex::append_lowest_bytes(mac, dump.word(), 4);
    wivex::append_lowest_bytes(mac, dump.word(), 2);
    require(mac.size() == wivex::mac_text_length + 1 && mac.back() == ':');
    require(mac.substr(9, 2) == text.substr(11, 2) && mac.substr(0, 2) == text.substr(17, 2));
    return 0;
}
