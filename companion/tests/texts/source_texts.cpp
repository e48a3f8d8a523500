// SPDX-License-Identifier: Apache-2.0
#include "source_texts.hpp"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace report_test {

namespace {

enum class Kind : unsigned char { word, text, sign };

struct Token {
    Kind kind = Kind::sign;
    std::string value;
    int line = 0;
};

bool is_word(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

char escaped_character(char c) {
    switch (c) {
    case 'n':
        return '\n';
    case 't':
        return '\t';
    case '0':
        return '\0';
    default:
        return c;
    }
}

class Lexer {
public:
    explicit Lexer(std::string_view source) : rest_(source) {}

    std::vector<Token> tokens() {
        std::vector<Token> list;
        while (!rest_.empty()) {
            if (skip_comment()) {
                continue;
            }
            const char c = rest_.front();
            if (c == '"') {
                add_text(list);
            } else if (c == '\'') {
                quoted('\'');
            } else if (is_word(c)) {
                list.push_back({Kind::word, word(), line_});
            } else {
                if (std::isspace(static_cast<unsigned char>(c)) == 0) {
                    list.push_back({Kind::sign, std::string(1, c), line_});
                }
                take(1);
            }
        }
        return list;
    }

private:
    void take(std::size_t count) {
        line_ += static_cast<int>(std::ranges::count(rest_.substr(0, count), '\n'));
        rest_.remove_prefix(std::min(count, rest_.size()));
    }

    bool skip_comment() {
        if (rest_.starts_with("//")) {
            take(rest_.find('\n'));
            return true;
        }
        if (rest_.starts_with("/*")) {
            take(rest_.find("*/") + 2);
            return true;
        }
        if (rest_.starts_with("#include")) {
            take(rest_.find('\n'));
            return true;
        }
        return false;
    }

    // Neighbouring literals are one.
    void add_text(std::vector<Token>& list) {
        const int line = line_;
        std::string text = quoted('"');
        if (!list.empty() && list.back().kind == Kind::text) {
            list.back().value += text;
            return;
        }
        list.push_back({Kind::text, std::move(text), line});
    }

    std::string quoted(char end) {
        std::string text;
        take(1);
        while (!rest_.empty() && rest_.front() != end) {
            if (rest_.front() == '\\' && rest_.size() > 1) {
                take(1);
                text += escaped_character(rest_.front());
            } else {
                text += rest_.front();
            }
            take(1);
        }
        take(1);
        return text;
    }

    std::string word() {
        std::size_t length = 0;
        while (length < rest_.size() && is_word(rest_[length])) {
            ++length;
        }
        std::string text(rest_.substr(0, length));
        take(length);
        return text;
    }

    std::string_view rest_;
    int line_ = 1;
};

/// The literals of each argument of a call; several where a condition chooses.
using Arguments = std::vector<std::vector<std::string>>;

// From behind the opening parenthesis on; `at` ends on the closing one.
Arguments arguments_at(const std::vector<Token>& tokens, std::size_t& at) {
    Arguments arguments(1);
    int depth = 1;
    for (; at < tokens.size(); ++at) {
        const Token& token = tokens[at];
        if (token.kind == Kind::text && depth == 1) {
            arguments.back().push_back(token.value);
        } else if (token.value == "(" || token.value == "[" || token.value == "{") {
            ++depth;
        } else if (token.value == ")" || token.value == "]" || token.value == "}") {
            if (--depth == 0) {
                break;
            }
        } else if (token.value == "," && depth == 1) {
            arguments.emplace_back();
        }
    }
    return arguments;
}

void append_to_all(std::vector<std::string>& texts, const std::vector<std::string>& alternatives) {
    std::vector<std::string> longer;
    for (const std::string& text : texts) {
        for (const std::string& alternative : alternatives) {
            longer.push_back(text + alternative);
        }
    }
    texts = std::move(longer);
}

// The format with every conversion replaced.
std::vector<std::string> expanded(const std::string& format, const Arguments& arguments) {
    std::vector<std::string> texts{""};
    std::size_t next = 1;
    for (std::size_t i = 0; i < format.size(); ++i) {
        if (format[i] != '%' || (i + 1 < format.size() && format[i + 1] == '%')) {
            append_to_all(texts, {std::string(1, format[i])});
            i += format[i] == '%' ? 1 : 0;
            continue;
        }
        while (i + 1 < format.size() &&
               std::string_view("sdzuxlc").find(format[i + 1]) == std::string_view::npos) {
            ++i;
            next += format[i] == '*' ? 1 : 0;
        }
        ++i;
        while (i < format.size() && (format[i] == 'z' || format[i] == 'l')) {
            ++i;
        }
        const bool known = next < arguments.size() && !arguments[next].empty();
        const bool text = i < format.size() && format[i] == 's';
        append_to_all(texts, known  ? arguments[next]
                             : text ? std::vector<std::string>{"x"}
                                    : std::vector<std::string>{"7"});
        ++next;
    }
    return texts;
}

void add_lines(std::vector<SourceText>& list, const std::string& text, const SourceText& where) {
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (!line.empty()) {
            list.push_back({line, where.file, where.source_line});
        }
    }
}

void add_call(std::vector<SourceText>& list, const std::string& function,
              const Arguments& arguments, const SourceText& where) {
    if (function == "print_out" || function == "print_err") {
        for (const std::string& format : arguments.front()) {
            for (const std::string& text : expanded(format, arguments)) {
                add_lines(list, text, where);
            }
        }
        return;
    }
    // A wrapper of them passes its texts on; the error of the system stands behind them.
    const std::string behind = function == "print_error" ? ": No such file or directory" : "";
    for (const std::vector<std::string>& alternatives : arguments) {
        for (const std::string& text : alternatives) {
            add_lines(list, text + behind, where);
        }
    }
}

// Behind a table or a variable: what ends a line, or begins as the tool's lines do.
bool may_be_printed(const std::string& text) {
    const bool is_line =
        text.size() > 4 && text.ends_with("\n") && text.find('%') == std::string::npos;
    return is_line || text.starts_with("[WIFI]") || text.starts_with("ERROR") ||
           text.starts_with("Fail");
}

} // namespace

std::vector<SourceText> texts_in_source(std::string_view source, const std::string& file) {
    std::vector<SourceText> list;
    const std::vector<Token> tokens = Lexer(source).tokens();
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        const Token& token = tokens[i];
        const SourceText where{"", file, token.line};
        const bool call = token.kind == Kind::word && token.value.starts_with("print_") &&
                          i + 1 < tokens.size() && tokens[i + 1].value == "(";
        if (call) {
            i += 2;
            add_call(list, token.value, arguments_at(tokens, i), where);
        } else if (token.kind == Kind::text && may_be_printed(token.value)) {
            add_lines(list, token.value, where);
        }
    }
    return list;
}

std::vector<SourceText> texts_in_folder(const std::string& folder) {
    std::vector<SourceText> list;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        const std::string extension = entry.path().extension();
        if (extension != ".cpp" && extension != ".hpp") {
            continue;
        }
        std::ifstream file(entry.path());
        std::stringstream source;
        source << file.rdbuf();
        const std::string name = std::filesystem::relative(entry.path(), folder);
        const std::vector<SourceText> texts = texts_in_source(source.str(), name);
        list.insert(list.end(), texts.begin(), texts.end());
    }
    return list;
}

} // namespace report_test
