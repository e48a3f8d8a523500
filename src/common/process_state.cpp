// SPDX-License-Identifier: Apache-2.0
#include "common/process_state.hpp"

namespace wivex {

RunOptions run_options;
std::int32_t compare_previous = 1;
volatile std::sig_atomic_t sigterm_var = 0;
std::int32_t client_counter = 0;
wpa_ctrl* command_connection = nullptr;
wpa_ctrl* event_connection = nullptr;

} // namespace wivex
