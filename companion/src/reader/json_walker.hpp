// SPDX-License-Identifier: Apache-2.0
// Walks through a JSON text from its beginning to its end and never holds it as a tree: a hostile
// one costs no more memory than its bytes. A place is told by its path: "/runs/*/mode", '*' for any
// element of a list.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace wivex::report {

class JsonWalker {
public:
    static constexpr std::size_t deepest = 16;

    JsonWalker() = default;
    JsonWalker(const JsonWalker&) = delete;
    JsonWalker& operator=(const JsonWalker&) = delete;
    virtual ~JsonWalker() = default;

    /// Returns what is wrong with `text`; empty: nothing.
    std::string walk(std::string_view text);

protected:
    /// Each returns false, by way of `refuse`, to end the walk.
    virtual bool take_number(std::string_view path, double value) = 0;
    virtual bool take_text(std::string_view path, std::string_view text) = 0;
    virtual bool take_flag(std::string_view /*path*/, bool /*value*/) {
        return true;
    }
    /// The object at `path` has ended.
    virtual bool end_of(std::string_view path) = 0;

    /// Whether anything at `path` or below is of interest; the rest is passed over quickly.
    virtual bool wants(std::string_view /*path*/) {
        return true;
    }

    /// The last name as it stands in the text; in a path, one that could be taken for a path is
    /// '?'.
    std::string_view name() const {
        return name_;
    }

    /// Notes what is wrong. Always false.
    bool refuse(std::string_view what);

private:
    friend class JsonEvents;

    std::string name_;
    std::string problem_;
};

} // namespace wivex::report
