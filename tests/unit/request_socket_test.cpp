// SPDX-License-Identifier: Apache-2.0
#include "diag/request_socket.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>

namespace {

/// An interface name with other fields of a request behind it.
struct Named {
    char name[IFNAMSIZ];
    char rest[8];
};

std::string bytes_after_naming(std::string_view interface) {
    Named request{};
    std::fill(std::begin(request.name), std::end(request.name), '?');
    std::fill(std::begin(request.rest), std::end(request.rest), '?');
    wivex::set_interface_name(request.name, interface);
    return std::string(request.name, sizeof(request.name)) +
           std::string(request.rest, sizeof(request.rest));
}

TEST(InterfaceName, is_zero_up_to_the_end_of_its_field) {
    EXPECT_EQ(std::string("wlan0") + std::string(11, '\0') + "????????",
              bytes_after_naming("wlan0"));
}

TEST(InterfaceName, of_more_than_15_characters_is_cut) {
    EXPECT_EQ(std::string("abcdefghijklmno") + '\0' + "????????",
              bytes_after_naming("abcdefghijklmno"));
    EXPECT_EQ(std::string("abcdefghijklmno") + '\0' + "????????",
              bytes_after_naming("abcdefghijklmnopqrstuvwxyz"));
}

} // namespace
