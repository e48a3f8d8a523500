// SPDX-License-Identifier: Apache-2.0
// The members of a JSON object as typed values. The first that is not as it should be is told by
// name; after it every value reads as missing.
#pragma once

#include "model/report.hpp"
#include "reader/bounded_json.hpp"

namespace wivex::line {

class Fields {
public:
    /// `where` names the object in messages; `problem` is that of the whole document.
    Fields(const Json& object, std::string where, std::string& problem);

    /// Missing and null are nothing; so is the empty text.
    Text text(const char* name, std::size_t most = 256);
    Figure figure(const char* name);
    std::optional<std::int64_t> count(const char* name);
    bool flag(const char* name);
    /// The object or list of that name; an empty one when it is missing or null.
    const Json& object(const char* name);
    const Json& list(const char* name);

    std::string required_text(const char* name);
    std::int64_t required_count(const char* name);

    std::string place(const char* name) const;
    void complain(const char* name, const char* what);

private:
    const Json* find(const char* name) const;

    const Json& object_;
    std::string where_;
    std::string& problem_;
};

} // namespace wivex::line
