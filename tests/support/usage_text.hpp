// SPDX-License-Identifier: Apache-2.0
// What the tool prints when it does not understand its command line, and for -h.
#pragma once

namespace test_texts {

inline constexpr const char* usage_text =
    "\n\nUsage: wivex  -m <count> \n\tA: SoftAP mode\n\tl: loopback test\n\tS: wifiscan mode "
    "-(SSID) [optional] -o <iw/dbus> scan mode\n\tw: wlan legacy mode\n\tg: autonomous GO "
    "mode\n\tc: p2p client mode\n\td: p2p device mode\n\n[-v: version info]\n[-h: help]\n[-u: "
    "debug]\n[-i: iteration-interval]\n[-F: Conf file selection/-F<user conf file>]\n[-R<Result "
    "file>]\n\n";

} // namespace test_texts
