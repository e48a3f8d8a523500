// SPDX-License-Identifier: Apache-2.0
// wivex-line-disk MOUNT IMAGES: mounts a forgetful disk. After each so many changes IMAGES gets a
// folder with what would be left if the power had gone then.

#include "forgetful_disk.hpp"

#include <fuse3/fuse.h>
#include <sys/stat.h>

#include <CLI/CLI.hpp>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>

namespace wivex::line {

namespace {

namespace fs = std::filesystem;

struct Plan {
    std::string mount;
    std::string images;
    std::string witness;
    std::uint64_t every = 1;
    std::uint32_t seed = 0;
};

class Mounted {
public:
    explicit Mounted(const Plan& plan) : plan_(plan), luck_(plan.seed) {}

    ForgetfulDisk& disk() {
        return disk_;
    }

    std::uint64_t open(const std::shared_ptr<DiskFile>& file) {
        open_[++last_] = file;
        return last_;
    }
    DiskFile& opened(const fuse_file_info* info) {
        return *open_.at(info->fh);
    }
    void close(const fuse_file_info* info) {
        open_.erase(info->fh);
    }

    // Called after each change; the number fits the answer to the change.
    int changed(int answer = 0) {
        if (++changes_ % plan_.every == 0) {
            write_image();
        }
        return answer;
    }

private:
    void write_image() {
        std::array<char, 16> number{};
        std::snprintf(number.data(), number.size(), "%08llu",
                      static_cast<unsigned long long>(changes_));
        const fs::path place = fs::path(plan_.images) / number.data();
        std::error_code error;
        fs::create_directories(place, error);
        for (const auto& [name, content] : disk_.left(plan_.seed == 0 ? nullptr : &luck_)) {
            std::ofstream(place / name, std::ios::binary) << content;
        }
        if (!plan_.witness.empty()) {
            fs::copy_file(plan_.witness, place / "witness", error);
        }
        if (error) {
            std::fprintf(stderr, "wivex-line-disk: %s\n", error.message().c_str());
        }
    }

    const Plan& plan_;
    ForgetfulDisk disk_;
    std::map<std::uint64_t, std::shared_ptr<DiskFile>> open_;
    std::uint64_t last_ = 0;
    std::uint64_t changes_ = 0;
    std::minstd_rand luck_;
};

Mounted& mounted() {
    return *static_cast<Mounted*>(fuse_get_context()->private_data);
}

std::string name_of(const char* path) {
    return path + 1; // there is one folder
}

void* begin(fuse_conn_info* /*connection*/, fuse_config* settings) {
    settings->hard_remove = 1;
    settings->nullpath_ok = 1;
    return fuse_get_context()->private_data;
}

int get_attributes(const char* path, struct stat* attributes, fuse_file_info* info) {
    *attributes = {};
    if (info == nullptr && std::string_view(path) == "/") {
        attributes->st_mode = S_IFDIR | 0755U;
        attributes->st_nlink = 2;
        return 0;
    }
    const std::shared_ptr<DiskFile> named =
        info == nullptr ? mounted().disk().find(name_of(path)) : nullptr;
    if (info == nullptr && !named) {
        return -ENOENT;
    }
    const DiskFile& file = named ? *named : mounted().opened(info);
    attributes->st_mode = S_IFREG | 0644U;
    attributes->st_nlink = 1;
    attributes->st_size = static_cast<off_t>(file.content().size());
    return 0;
}

int list(const char* /*path*/, void* buffer, fuse_fill_dir_t fill, off_t /*offset*/,
         fuse_file_info* /*info*/, fuse_readdir_flags /*flags*/) {
    for (const auto& [name, file] : mounted().disk().names()) {
        fill(buffer, name.c_str(), nullptr, 0, fuse_fill_dir_flags{});
    }
    return 0;
}

int make(const char* path, mode_t /*mode*/, fuse_file_info* info) {
    info->fh = mounted().open(mounted().disk().make(name_of(path)));
    return mounted().changed();
}

int open_file(const char* path, fuse_file_info* info) {
    const std::shared_ptr<DiskFile> file = mounted().disk().find(name_of(path));
    if (!file) {
        return -ENOENT;
    }
    info->fh = mounted().open(file);
    return 0;
}

int close_file(const char* /*path*/, fuse_file_info* info) {
    mounted().close(info);
    return 0;
}

int read_file(const char* /*path*/, char* buffer, std::size_t size, off_t offset,
              fuse_file_info* info) {
    const std::string& content = mounted().opened(info).content();
    const auto begin = static_cast<std::size_t>(offset);
    return begin >= content.size() ? 0 : static_cast<int>(content.copy(buffer, size, begin));
}

int write_file(const char* /*path*/, const char* bytes, std::size_t size, off_t offset,
               fuse_file_info* info) {
    mounted().opened(info).write(static_cast<std::size_t>(offset), {bytes, size});
    return mounted().changed(static_cast<int>(size));
}

int resize(const char* path, off_t size, fuse_file_info* info) {
    const std::shared_ptr<DiskFile> named =
        info == nullptr ? mounted().disk().find(name_of(path)) : nullptr;
    if (info == nullptr && !named) {
        return -ENOENT;
    }
    (named ? *named : mounted().opened(info)).resize(static_cast<std::size_t>(size));
    return mounted().changed();
}

int remove_file(const char* path) {
    return mounted().disk().remove(name_of(path)) ? mounted().changed() : -ENOENT;
}

int rename_file(const char* from, const char* to, unsigned int /*flags*/) {
    return mounted().disk().rename(name_of(from), name_of(to)) ? mounted().changed() : -ENOENT;
}

int sync_file(const char* /*path*/, int /*only_data*/, fuse_file_info* info) {
    mounted().opened(info).sync();
    return mounted().changed();
}

int sync_folder(const char* /*path*/, int /*only_data*/, fuse_file_info* /*info*/) {
    mounted().disk().sync_names();
    return mounted().changed();
}

fuse_operations operations() {
    fuse_operations all{};
    all.init = begin;
    all.getattr = get_attributes;
    all.readdir = list;
    all.create = make;
    all.open = open_file;
    all.release = close_file;
    all.read = read_file;
    all.write = write_file;
    all.truncate = resize;
    all.unlink = remove_file;
    all.rename = rename_file;
    all.fsync = sync_file;
    all.fsyncdir = sync_folder;
    all.utimens = [](const char*, const timespec*, fuse_file_info*) { return 0; };
    all.chmod = [](const char*, mode_t, fuse_file_info*) { return 0; };
    all.chown = [](const char*, uid_t, gid_t, fuse_file_info*) { return 0; };
    return all;
}

int start(int argc, char** argv) {
    CLI::App app("Mounts a disk that loses what nobody synced, until it is unmounted.",
                 "wivex-line-disk");
    Plan plan;
    app.add_option("mount", plan.mount, "Where the disk is mounted.")->required();
    app.add_option("images", plan.images, "Gets what would be left after a loss of power.")
        ->required();
    app.add_option("--every", plan.every, "An image after each so many changes.")
        ->check(CLI::PositiveNumber);
    app.add_option("--seed", plan.seed, "Not 0: half of what was not synced is left.");
    app.add_option("--witness", plan.witness, "A file that is copied into each image.");
    CLI11_PARSE(app, argc, argv);
    Mounted disk(plan);
    std::string name = "wivex-line-disk";
    std::string in_foreground = "-f";
    std::string one_by_one = "-s";
    std::array<char*, 4> arguments{name.data(), in_foreground.data(), one_by_one.data(),
                                   plan.mount.data()};
    const fuse_operations all = operations();
    return fuse_main(static_cast<int>(arguments.size()), arguments.data(), &all, &disk);
}

} // namespace

} // namespace wivex::line

int main(int argc, char** argv) {
    try {
        return wivex::line::start(argc, argv);
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "wivex-line-disk: %s\n", problem.what());
        return 1;
    }
}
