# SPDX-License-Identifier: Apache-2.0
# Tells every mutant of C++ files that clang-format has laid out, one a line: file, number of the line,
# kind, the line, the line with one thing changed; tabs stand between. Whatever declares alone, a
# comment or an include is left alone.

BEGIN {
    FS = "\n"
    count = split("== != != == < <= <= < > >= >= > && || || && + - - + * / / * % * & | | & << >> >> << " \
                  "+= -= -= += |= &= &= |= ++ -- -- ++ true false false true", word, " ")
    for (i = 1; i < count; i += 2) {
        other[word[i]] = word[i + 1]
    }
}

/^ *(\/\/|#|$)/ || /^ *(using|namespace|template|static_assert)/ {
    next
}

{
    scan()
    turn_condition()
    leave_out()
    previous = $0
    sub(/ *\/\/ .*/, "", previous)
}

function tell(kind, first, width, text) {
    line = substr($0, 1, first - 1) text substr($0, first + width)
    printf "%s\t%d\t%s\t%s\t%s\n", FILENAME, FNR, kind, $0, line
}

# Reads the line part by part: texts, characters, words, numbers, operators.
function scan(    first, rest, width) {
    for (first = 1; first <= length($0); first += width) {
        rest = substr($0, first)
        width = 1
        if (match(rest, /^ ?\/\/ /)) {
            return
        } else if (match(rest, /^R"\([^)]*\)"/)) {
            width = RLENGTH
        } else if (match(rest, /^"([^"\\]|\\.)*"/)) {
            width = RLENGTH
            shorten(first, width, substr(rest, 2, width - 2))
        } else if (match(rest, /^'([^'\\]|\\x..|\\.)'/)) {
            width = RLENGTH
            tell("number", first, width, substr(rest, 1, width) " + 1")
        } else if (match(rest, /^[A-Za-z_][A-Za-z0-9_]*/)) {
            width = RLENGTH
            exchange(first, width, substr(rest, 1, width))
        } else if (match(rest, /^[0-9][0-9a-fA-FxX'.]*/)) {
            width = RLENGTH
            tell("number", first + width - 1, 1, next_digit(substr(rest, width, 1)))
        } else if (match(rest, /^ [-+*\/%&|<>=!]+( |$)/)) {
            width = 1 + length(operator_in(rest))
            exchange(first + 1, width - 1, operator_in(rest))
        } else if (match(rest, /^(\+\+|--)/)) {
            width = RLENGTH
            exchange(first, width, substr(rest, 1, width))
        } else if (match(rest, /^![A-Za-z_(]/)) {
            tell("operator", first, 1, "")
        }
    }
}

function operator_in(rest) {
    match(substr(rest, 2), /^[^ ]+/)
    return substr(rest, 2, RLENGTH)
}

function exchange(first, width, old) {
    if (old in other) {
        tell("operator", first, width, other[old])
    }
}

function next_digit(digit) {
    return digit == "9" ? "8" : digit ~ /[fF]/ ? "e" : digit ~ /[0-9a-eA-E]/ ? \
        substr("0123456789abcdef", index("0123456789abcdef", tolower(digit)) + 1, 1) : digit
}

# A text without its first character, and one without its last.
function shorten(first, width, text,    head, tail) {
    if (text == "") {
        return
    }
    head = text ~ /^\\/ ? 2 : 1
    tail = text ~ /\\.$/ ? 2 : 1
    if (text !~ /^\\x/) {
        tell("text", first + 1, head, "")
    }
    if (length(text) > head && text !~ /\\x..$/) {
        tell("text", first + width - 1 - tail, tail, "")
    }
}

function turn_condition(    first) {
    if (match($0, /(if|while) \(.*\) \{$/) && !/(if|while) \((const|auto|std::string|int) /) {
        first = RSTART + index(substr($0, RSTART), "(")
        tell("condition", first, length($0) - 3 - first + 1, "!(" substr($0, first, length($0) - 3 - first + 1) ")")
    }
}

# A whole statement on a line of its own; a value that gets a name is needed further down.
function leave_out() {
    if (FILENAME ~ /\.cpp$/ && /^    +[A-Za-z_(*+-].*;$/ && previous ~ /[;{}:]$/ &&
        !/^ *(return .|case |static |class |struct |enum )/ &&
        !/^ *[A-Za-z_][A-Za-z0-9_:<>, ]*[&*]* [a-z_]+ = /) {
        match($0, /^ +/)
        tell("statement", RLENGTH + 1, length($0), ";")
    }
}
