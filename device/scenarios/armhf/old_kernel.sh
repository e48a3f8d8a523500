# SPDX-License-Identifier: Apache-2.0
# A kernel as old as the oldest devices have: what it does not know fails as it does there. Only the ARM
# device can be made to.

scenario_one_file_without_dependencies_passes_on_the_calls_of_kernel_3_2() {
    # shellcheck source=device/scenarios/footprint.sh
    . /device/scenarios/footprint.sh
    factory_line
    program='as-kernel-3-2 wivex-static'
    run_tool -u -w -m 2
    expect_a_pass
}
