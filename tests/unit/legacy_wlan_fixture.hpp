// SPDX-License-Identifier: Apache-2.0
// All that the legacy WLAN test talks to: a supplicant that hears the access point "home", and the
// programs that it runs.
#pragma once

#include "host_programs.hpp"
#include "process_fixture.hpp"

#include <memory>
#include <string>

namespace wivex::test_support {

class LegacyWlanFixture : public ControlSocketFixture {
protected:
    void SetUp() override;

    /// A supplicant with which the test passes, as far as these two answers let it. It takes the
    /// place of the one before it.
    void start_supplicant(const std::string& listing = "bssid / frequency / signal level / flags / "
                                                       "ssid\n02:00:00:00:00:01\t2412\t-40\t"
                                                       "[WPA2-PSK-CCMP][ESS]\thome\n",
                          const std::string& network_id = "0\n");

    /// Lets a process without rights reach the supplicant and write into the directory.
    void let_anybody_in() const;

    HostPrograms programs_;
    std::unique_ptr<FakeSupplicant> supplicant_;
};

} // namespace wivex::test_support
