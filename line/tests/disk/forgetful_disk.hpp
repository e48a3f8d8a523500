// SPDX-License-Identifier: Apache-2.0
// A folder of files as a disk holds them: what nobody synced is lost when the power goes, or half
// of it is. A file's content is safe when the file was synced, its name when the folder was.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace wivex::line {

class DiskFile {
public:
    const std::string& content() const {
        return content_;
    }
    /// Bytes beyond the end are made of zeros up to `offset`.
    void write(std::size_t offset, std::string_view bytes);
    void resize(std::size_t size);
    void sync();

    /// What is left of it when the power goes now: what was synced, and with `luck` any sectors of
    /// what came after.
    std::string left(std::minstd_rand* luck) const;

private:
    struct Write {
        std::size_t offset;
        std::string bytes;
    };

    std::string content_;
    std::string synced_;
    /// Since the last sync, in pieces of a sector. (A new size goes with the next sync.)
    std::vector<Write> writes_;
};

class ForgetfulDisk {
public:
    using Names = std::map<std::string, std::shared_ptr<DiskFile>>;

    const Names& names() const {
        return names_;
    }
    /// Nothing when there is no such file.
    std::shared_ptr<DiskFile> find(const std::string& name) const;
    std::shared_ptr<DiskFile> make(const std::string& name);
    bool remove(const std::string& name);
    bool rename(const std::string& from, const std::string& to);
    void sync_names();

    /// The files that are left when the power goes now. With `luck` names that were not synced may
    /// be there too, and removed ones may be gone.
    std::map<std::string, std::string> left(std::minstd_rand* luck) const;

private:
    Names names_;
    Names synced_;
};

} // namespace wivex::line
