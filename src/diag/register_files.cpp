// SPDX-License-Identifier: Apache-2.0
#include "diag/register_files.hpp"

#include "common/console.hpp"
#include "common/files.hpp"
#include "common/shell.hpp"
#include "diag/mac_text.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace wivex {

namespace {

constexpr std::size_t command_size = 128;
constexpr std::size_t dump_line_length = 19;
constexpr std::size_t word_digits = 8;

/// A register of the firmware's address and how its steps are told.
struct AddressWord {
    const char* address;
    const char* file;
    const char* file_name;
    std::size_t bytes;
    /// The two words tell a short read in different words.
    const char* conjunction;
};

constexpr AddressWord first_word{"0x28000", "/tmp/temp_file1", "temp_file1", 4, ""};
constexpr AddressWord second_word{"0x28004", "/tmp/temp_file2", "temp_file2", 2, "and "};

int run_printed(const std::string& command) {
    print_out("[WIFI]buf is %s\n", command.c_str());
    return run_shell(command);
}

std::string register_file(const PhyName& phy, const char* name) {
    return std::string(phy_root) + "/" + phy.data() + "/ath6kl/" + name;
}

// Only a shell that was killed fails here, not the exit status of `stat`: kept.
bool register_files_answer(const PhyName& phy) {
    const std::string command = fit_command("stat " + register_file(phy, "reg_addr"));
    if ((run_printed(command) & 0xff) != 0) {
        print_out("[WIFI]Call to system(%s) is not successful...\n", command.c_str());
        return false;
    }
    return true;
}

bool select_register(const PhyName& phy, const char* address) {
    const std::string target = register_file(phy, "reg_addr");
    if (run_printed(fit_command(std::string("echo ") + address + " > " + target)) != 0) {
        print_out("[WIFI]Can not write to reg_addr file using echo command. "
                  "Please check file access permissions.\n");
        return false;
    }
    return true;
}

bool dump_register(const PhyName& phy, const char* file) {
    const std::string source = register_file(phy, "reg_dump");
    if (run_printed(fit_command("cat  " + source + " > " + file)) != 0) {
        print_out("[WIFI]Can not read reg_dump file using cat command. "
                  "Please check driver status.\n");
        return false;
    }
    return true;
}

bool read_dump(const AddressWord& word, RegisterDump& dump) {
    const UniqueFd file = open_file(word.file, O_RDONLY);
    if (!file) {
        print_out("[WIFI]File %s doesn't exist...\n", word.file_name);
        return false;
    }
    // One character more than a complete line, so that a longer one shows.
    std::array<char, dump_line_length + 1> text{};
    const ssize_t count =
        call_on_file([&file, &text] { return read(file.get(), text.data(), text.size()); });
    if (count < 0) {
        dump.length = -1;
    } else {
        dump = parse_register_dump({text.data(), static_cast<std::size_t>(count)});
    }
    if (dump.length != static_cast<int>(dump_line_length)) {
        print_out("[WIFI]Can not read temporary file properly %sr_bytes is %d...\n",
                  word.conjunction, dump.length);
    }
    return true;
}

void print_dump(const RegisterDump& dump) {
    print_out("[WIFI]buf2 is %s and its length is %zu\n", dump.line.c_str(), dump.line.size());
}

// The two words of the address print an incomplete dump in opposite orders: kept.
void print_incomplete(const AddressWord& word, const RegisterDump& dump) {
    if (&word == &first_word) {
        print_out("[WIFI]Content of file can't be stored in buffer and ...\n");
        print_dump(dump);
    } else {
        print_dump(dump);
        print_out("[WIFI]Content of file can't be stored in buffer...\n");
    }
}

// Appends the bytes of `word` to `mac`.
bool read_word(const PhyName& phy, const AddressWord& word, std::string& mac) {
    RegisterDump dump;
    if (!select_register(phy, word.address) || !dump_register(phy, word.file) ||
        !read_dump(word, dump)) {
        return false;
    }
    if (!dump.complete()) {
        print_incomplete(word, dump);
        return false;
    }
    print_dump(dump);
    append_lowest_bytes(mac, dump.word(), word.bytes);
    return true;
}

bool remove_dump(const AddressWord& word) {
    if (run_printed(std::string("rm ") + word.file) != 0) {
        print_out("[WIFI]Can not remove %s using rm command. "
                  "Please check file exixtence and access permissions.\n",
                  word.file_name);
        return false;
    }
    return true;
}

} // namespace

bool find_phy_name(PhyName& out) {
    const Directory root = open_directory(phy_root);
    if (!root) {
        print_out("[WIFI]Cannot open file %s\n", phy_root);
        return false;
    }
    while (const dirent* entry = next_entry(root)) {
        const std::string_view name = entry->d_name;
        if (name.find("phy") != std::string_view::npos) {
            name.copy(out.data(), out.size() - 1);
            return true;
        }
    }
    if (const int error = errno; error != 0) {
        print_error("readdir_r", error);
        return false;
    }
    print_out("[WIFI]readdir_r returns NULL because either no directory left or there is no "
              "directory in dir\n");
    return false;
}

std::string fit_command(std::string text) {
    text.resize(std::min(text.size(), command_size - 1));
    return text;
}

bool RegisterDump::complete() const {
    return line.size() == dump_line_length;
}

std::string_view RegisterDump::word() const {
    return std::string_view(line).substr(dump_line_length - word_digits);
}

RegisterDump parse_register_dump(std::string_view text) {
    const std::string_view line = text.substr(0, std::min(text.find('\n'), dump_line_length + 1));
    return {std::string(line.substr(0, line.find('\0'))), static_cast<int>(line.size())};
}

int read_fw_mac_ath6kl(std::string& out) {
    PhyName phy{};
    if (!find_phy_name(phy)) {
        print_out("[WIFI]phy_addr is NULL\n");
        return 0;
    }
    print_out("[WIFI]phy_addr is [%s]\n", phy.data());
    std::string mac;
    if (!register_files_answer(phy) || !read_word(phy, first_word, mac) ||
        !read_word(phy, second_word, mac)) {
        return 0;
    }
    mac.pop_back();
    print_out("[WIFI]mac_addr is %s and its length is %zu\n", mac.c_str(), mac.size());
    if (!remove_dump(first_word) || !remove_dump(second_word)) {
        return 0;
    }
    out = mac;
    print_out("[WIFI]fw_mac_addr is %s and its length is %zu\n", out.c_str(), out.size());
    return 1;
}

} // namespace wivex
