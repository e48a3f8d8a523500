// SPDX-License-Identifier: Apache-2.0
#include "legacy_wlan_fixture.hpp"

#include <sys/stat.h>

namespace wivex::test_support {

void LegacyWlanFixture::SetUp() {
    ControlSocketFixture::SetUp();
    for (const char* program : {"udhcpc", "killall", "iperf"}) {
        programs_.provide(program);
    }
    config_.interface_name = "wlan0";
    config_.ctrl_iface = directory_ / "ctrl";
    ::mkdir(config_.ctrl_iface.c_str(), 0755);
    config_.go_ssid = "home";
    config_.go_passphrase = "secret";
    config_.p2p_iface_ip = "10.0.0.1";
}

void LegacyWlanFixture::start_supplicant(const std::string& listing,
                                         const std::string& network_id) {
    supplicant_.reset();
    supplicant_ = std::make_unique<FakeSupplicant>(directory_ / "ctrl/wlan0");
    supplicant_->event_after("SCAN", "<3>CTRL-EVENT-SCAN-RESULTS ");
    supplicant_->answer("SCAN_RESULTS", {listing});
    supplicant_->answer("ADD_NETWORK", {network_id});
    supplicant_->event_after("SELECT_NETWORK 0 ", "<3>CTRL-EVENT-CONNECTED - Connection");
    supplicant_->event_after("DISABLE_NETWORK 0 ", "<3>CTRL-EVENT-DISCONNECTED bssid=02:00");
}

void LegacyWlanFixture::let_anybody_in() const {
    ::chmod(directory_.path().c_str(), 0777);
    ::chmod((directory_ / "ctrl/wlan0").c_str(), 0777);
}

} // namespace wivex::test_support
