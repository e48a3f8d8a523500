// SPDX-License-Identifier: Apache-2.0
#include "world/usb_devices.hpp"

namespace bench {

namespace {

constexpr const char* root_hub =
    "\n"
    "T:  Bus=01 Lev=00 Prnt=00 Port=00 Cnt=00 Dev#=  1 Spd=480  MxCh= 4\n"
    "B:  Alloc=  0/800 us ( 0%), #Int=  0, #Iso=  0\n"
    "D:  Ver= 2.00 Cls=09(hub  ) Sub=00 Prot=01 MxPS=64 #Cfgs=  1\n"
    "P:  Vendor=1d6b ProdID=0002 Rev= 3.18\n"
    "S:  Manufacturer=Linux 3.18.20 ehci_hcd\n"
    "S:  Product=EHCI Host Controller\n"
    "S:  SerialNumber=soc-ehci.0\n"
    "C:* #Ifs= 1 Cfg#= 1 Atr=e0 MxPwr=  0mA\n"
    "I:* If#= 0 Alt= 0 #EPs= 1 Cls=09(hub  ) Sub=00 Prot=00 Driver=hub\n"
    "E:  Ad=81(I) Atr=03(Int.) MxPS=   4 Ivl=256ms\n";

constexpr const char* serial_adapter =
    "\n"
    "T:  Bus=01 Lev=01 Prnt=01 Port=02 Cnt=02 Dev#=  3 Spd=12   MxCh= 0\n"
    "D:  Ver= 1.10 Cls=00(>ifc ) Sub=00 Prot=00 MxPS=64 #Cfgs=  1\n"
    "P:  Vendor=067b ProdID=2303 Rev= 3.00\n"
    "S:  Product=USB-Serial Controller\n"
    "C:* #Ifs= 1 Cfg#= 1 Atr=80 MxPwr=100mA\n"
    "I:* If#= 0 Alt= 0 #EPs= 3 Cls=ff(vend.) Sub=00 Prot=00 Driver=pl2303\n"
    "E:  Ad=81(I) Atr=03(Int.) MxPS=  10 Ivl=1ms\n"
    "E:  Ad=02(O) Atr=02(Bulk) MxPS=  64 Ivl=0ms\n"
    "E:  Ad=83(I) Atr=02(Bulk) MxPS=  64 Ivl=0ms\n";

std::string wifi_module(const std::string& ids) {
    return "\n"
           "T:  Bus=01 Lev=01 Prnt=01 Port=00 Cnt=01 Dev#=  2 Spd=480  MxCh= 0\n"
           "D:  Ver= 2.00 Cls=ff(vend.) Sub=00 Prot=00 MxPS=64 #Cfgs=  1\n"
           "P:  Vendor=" +
           ids.substr(0, 4) + " ProdID=" + ids.substr(5) +
           " Rev= 0.01\n"
           "S:  Manufacturer=Module\n"
           "S:  Product=Remote Download Wireless Adapter\n"
           "C:* #Ifs= 1 Cfg#= 1 Atr=80 MxPwr=500mA\n"
           "I:* If#= 0 Alt= 0 #EPs= 3 Cls=ff(vend.) Sub=00 Prot=ff Driver=wifi\n"
           "E:  Ad=81(I) Atr=03(Int.) MxPS=  16 Ivl=1ms\n"
           "E:  Ad=82(I) Atr=02(Bulk) MxPS= 512 Ivl=0ms\n"
           "E:  Ad=03(O) Atr=02(Bulk) MxPS= 512 Ivl=0ms\n";
}

} // namespace

std::string usb_device_list(const std::string& module) {
    return root_hub + (module.empty() ? "" : wifi_module(module)) + serial_adapter;
}

} // namespace bench
