# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Completion of cradle-generate-config for bash, on top of the package bash-completion.

# The directories of a list with colons between them: the last one is completed.
_cradle_directories() {
    local list='' cur=$1
    if [[ $cur == *:* ]]; then
        list=${cur%:*}: cur=${cur##*:}
    fi
    _filedir -d
    COMPREPLY=("${COMPREPLY[@]/#/"$list"}")
    __ltrim_colon_completions "$list$cur"
}

# The value of an option, which may be anything: also what looks like an option.
_cradle_generate_config_value() { # OPTION VALUE
    local cur=$2
    case $1 in
        --type) mapfile -t COMPREPLY < <(compgen -W 'config lxc property' -- "$cur") ;;
        --config) _filedir -d ;;
        --configs) _cradle_directories "$cur" ;;
        --user-id | --base-uid)
            mapfile -t COMPREPLY < <(compgen -W "$(getent passwd | cut -d : -f 3)" -- "$cur")
            ;;
        --log-level)
            mapfile -t COMPREPLY < <(compgen -W 'critical error warning info debug' -- "$cur")
            ;;
    esac
}

_cradle_generate_config() {
    local cur prev words cword
    _init_completion -n := || return
    local options='--type --config --configs --user-id --instance --base-uid --log-level'
    local position=1
    while ((position < cword)) && [[ ${words[position]} == --?* ]]; do
        ((position += 2))
    done
    local isMarked=0
    if ((position == cword - 1)) && [[ ${words[position]} == -- ]]; then
        isMarked=1
    fi
    if ((position > cword)); then
        _cradle_generate_config_value "$prev" "$cur"
    elif ((position == cword)) && [[ $cur == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$cur")
    elif ((position == cword || isMarked)); then
        _filedir
    fi
} && complete -F _cradle_generate_config cradle-generate-config
