# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Completion of cradle-inspect-config for bash, on top of the package bash-completion.

# The directories of a list with colons between them: the last one is completed.
_cradle_inspect_directories() {
    local list='' cur=$1
    if [[ $cur == *:* ]]; then
        list=${cur%:*}: cur=${cur##*:}
    fi
    _filedir -d
    COMPREPLY=("${COMPREPLY[@]/#/"$list"}")
    __ltrim_colon_completions "$list$cur"
}

_cradle_inspect_words() { # WORDS CURRENT
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$2")
}

# The value of an option; fails where the option has none.
_cradle_inspect_value() { # OPTION CURRENT
    local cur=$2
    case $1 in
        -c | --config) _filedir -d ;;
        -C | --configs) _cradle_inspect_directories "$cur" ;;
        -t | --type) _cradle_inspect_words 'config lxc property' "$cur" ;;
        -f | --format) _cradle_inspect_words 'text json svg' "$cur" ;;
        --color) _cradle_inspect_words 'auto always never' "$cur" ;;
        -u | --user-id | -b | --base-uid)
            _cradle_inspect_words "$(getent passwd | cut -d : -f 3)" "$cur"
            ;;
        -i | --instance) ;;
        *) return 1 ;;
    esac
}

_cradle_inspect_config() {
    local cur prev words cword
    _init_completion -n := || return
    local options='--config --configs --type --user-id --instance --base-uid --format --color'
    options+=' --all --run --strict --help --version'
    local commands=' files show explain check diff graph keys findings '
    local word command=''
    for word in "${words[@]:1:cword-1}"; do
        [[ $commands == *" $word "* ]] && command=$word
    done
    if _cradle_inspect_value "$prev" "$cur"; then
        return
    elif [[ $cur == -* ]]; then
        _cradle_inspect_words "$options" "$cur"
    elif [[ ! $command ]]; then
        _cradle_inspect_words "$commands" "$cur"
    elif [[ $command == diff ]]; then
        _filedir
    fi
} && complete -F _cradle_inspect_config cradle-inspect-config
