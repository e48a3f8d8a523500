// SPDX-License-Identifier: Apache-2.0
#include "forgetful_disk.hpp"

#include <algorithm>

namespace wivex::line {

namespace {

constexpr std::size_t sector = 512;

void put(std::string& content, std::size_t offset, std::string_view bytes) {
    content.resize(std::max(content.size(), offset + bytes.size()));
    content.replace(offset, bytes.size(), bytes);
}

bool is_lucky(std::minstd_rand* luck) {
    return luck != nullptr && (*luck)() % 2 == 0;
}

} // namespace

void DiskFile::write(std::size_t offset, std::string_view bytes) {
    put(content_, offset, bytes);
    while (!bytes.empty()) {
        const std::size_t size = std::min(bytes.size(), sector - offset % sector);
        writes_.push_back({offset, std::string(bytes.substr(0, size))});
        bytes.remove_prefix(size);
        offset += size;
    }
}

void DiskFile::resize(std::size_t size) {
    content_.resize(size);
}

void DiskFile::sync() {
    synced_ = content_;
    writes_.clear();
}

std::string DiskFile::left(std::minstd_rand* luck) const {
    std::string content = synced_;
    for (const Write& write : writes_) {
        if (is_lucky(luck)) {
            put(content, write.offset, write.bytes);
        }
    }
    return content;
}

std::shared_ptr<DiskFile> ForgetfulDisk::find(const std::string& name) const {
    const auto found = names_.find(name);
    return found == names_.end() ? nullptr : found->second;
}

std::shared_ptr<DiskFile> ForgetfulDisk::make(const std::string& name) {
    return names_[name] = std::make_shared<DiskFile>();
}

bool ForgetfulDisk::remove(const std::string& name) {
    return names_.erase(name) != 0;
}

bool ForgetfulDisk::rename(const std::string& from, const std::string& to) {
    const std::shared_ptr<DiskFile> file = find(from);
    if (file) {
        names_.erase(from);
        names_[to] = file;
    }
    return file != nullptr;
}

void ForgetfulDisk::sync_names() {
    synced_ = names_;
}

std::map<std::string, std::string> ForgetfulDisk::left(std::minstd_rand* luck) const {
    Names names = synced_;
    for (const auto& [name, file] : synced_) {
        if (!names_.contains(name) && is_lucky(luck)) {
            names.erase(name);
        }
    }
    for (const auto& [name, file] : names_) {
        if (is_lucky(luck)) {
            names[name] = file;
        }
    }
    std::map<std::string, std::string> files;
    for (const auto& [name, file] : names) {
        files[name] = file->left(luck);
    }
    return files;
}

} // namespace wivex::line
