# SPDX-License-Identifier: Apache-2.0
# A 32-bit tool on a 64-bit kernel, which takes its requests by another road. What the chips do is
# that of a tool of the kernel's own width.

with_a_32_bit_tool() {
    program=wivex-32-bit
    # shellcheck source=/dev/null
    . "/device/scenarios/chips/$1.sh"
    "$2"
}

scenario_a_32_bit_tool_passes_with_broadcom_chips() {
    with_a_32_bit_tool broadcom scenario_broadcom_loopback_and_address_pass
}

scenario_requests_of_a_32_bit_tool_arrive_at_a_broadcom_chip() {
    with_a_32_bit_tool broadcom scenario_broadcom_requests_arrive_as_they_were_made
}

scenario_a_32_bit_tool_is_refused_by_a_broadcom_chip() {
    with_a_32_bit_tool broadcom scenario_broadcom_requests_are_refused_one_by_one
}

scenario_ctrl_c_ends_requests_of_a_32_bit_tool_to_a_broadcom_chip() {
    with_a_32_bit_tool broadcom scenario_ctrl_c_ends_every_broadcom_request_that_sleeps
}

scenario_a_32_bit_tool_passes_with_a_combo_chip() {
    with_a_32_bit_tool combo scenario_combo_loopback_and_address_pass
}

scenario_requests_of_a_32_bit_tool_arrive_at_a_combo_chip() {
    with_a_32_bit_tool combo scenario_combo_requests_arrive_as_they_were_made
}

scenario_a_32_bit_tool_finds_the_table_of_a_combo_chip_by_doubling() {
    with_a_32_bit_tool combo scenario_combo_table_is_found_by_doubling_up_to_512_entries
}

scenario_a_32_bit_tool_is_refused_by_a_combo_chip() {
    with_a_32_bit_tool combo scenario_combo_loopback_is_refused
}

scenario_a_32_bit_tool_gets_long_answers_of_a_combo_chip() {
    with_a_32_bit_tool combo scenario_combo_answers_are_cut_at_2047_bytes_whatever_length_is_reported
}

scenario_ctrl_c_ends_requests_of_a_32_bit_tool_to_a_combo_chip() {
    with_a_32_bit_tool combo scenario_ctrl_c_ends_every_combo_request_that_sleeps
}
