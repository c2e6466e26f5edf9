# Sourced: what the help texts of the programs say.
set -euo pipefail
export LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen
failures=0

# same WHAT EXPECTED FOUND: both are words; notes a difference
same()
{
    local expected found
    expected=$(tr -s ' \n' '\n\n' <<<"$2" | sed '/^$/d' | sort)
    found=$(tr -s ' \n' '\n\n' <<<"$3" | sed '/^$/d' | sort)
    [ "$expected" != "$found" ] || return 0
    echo "$1 (< the program, > the text):" >&2
    diff <(echo "$expected") <(echo "$found") >&2 || true
    failures=$((failures + 1))
}

# options_of PROGRAM [VERB]: the options that its help lists
options_of()
{
    "$@" --help | sed '1,/^选项：/d' | grep -oP '^  \K-.*?(?=  |$)' | grep -oP '(?<![\w-])--?[a-z][a-z-]*'
}

# verbs_of PROGRAM
verbs_of()
{
    "$1" --help | sed -n '/^命令：/,/^选项：/p' | grep -oP '^  \K[a-z][a-z-]*'
}

# words_of PROGRAM VERB: the words that may follow a verb, listed in its description
words_of()
{
    "$@" --help | sed -n '1,/^选项：/p' | grep -oP '^  \K[a-z]+(?= )' || true
}

# at_the_end: what the checks have found
at_the_end()
{
    [ "$failures" -eq 0 ]
}
