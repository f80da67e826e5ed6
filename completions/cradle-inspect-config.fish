# SPDX-License-Identifier: MIT
# Completion of cradle-inspect-config for fish.

# The ids of all users, with their names.
function __cradle_inspect_user_ids
    getent passwd | while read -d : --local name _ id _
        printf '%s\t%s\n' $id $name
    end
end

# The directories of a list with colons between them: the last one is completed.
function __cradle_inspect_directories
    set -l list (commandline -ct)
    set -l done (string match -r '.*:' -- $list)
    for directory in (__fish_complete_directories (string replace -r '.*:' '' -- $list))
        printf '%s%s\n' "$done" $directory
    end
end

set -l commands files show explain check diff graph keys findings
set -l command complete -c cradle-inspect-config
set -l none "not __fish_seen_subcommand_from $commands"

$command -f
$command -n '__fish_seen_subcommand_from diff' -F
$command -s c -l config -x -a '(__fish_complete_directories)' -d 'read this directory; may be repeated (default /etc/cradle.conf.d)'
$command -s C -l configs -x -a '(__cradle_inspect_directories)' -d 'read these directories'
$command -s t -l type -x -a 'config lxc property' -d 'see what a run of this type sees: config (default), lxc or property'
$command -s u -l user-id -x -a '(__cradle_inspect_user_ids)' -d 'the user of the run (default: the active user of seat0)'
$command -s i -l instance -x -d 'the instance of the run (default: default)'
$command -s b -l base-uid -x -a '(__cradle_inspect_user_ids)' -d 'the base uid of the run (default: 0)'
$command -s f -l format -x -a 'text json svg' -d 'text (default) or json; for graph also svg'
$command -l color -x -a 'auto always never' -d 'auto (default), always or never'
$command -s a -l all -d 'show: also what was overridden or cleared; graph: also keys on their own'
$command -l run -d 'start the commands and hooks that a run would start'
$command -l strict -d 'check: warnings count as well'
$command -s h -l help -d 'show this help'
$command -s V -l version -d 'show the version'
$command -n $none -a files -d 'what a run reads, runs and copies, in its order, and what it passes over'
$command -n $none -a show -d 'the merged configuration, each value with its file and line'
$command -n $none -a explain -d 'all that happened to a key, and what becomes of it'
$command -n $none -a check -d 'what is wrong or doubtful, and what to do about it'
$command -n $none -a diff -d 'what a run would change in an output file of the type'
$command -n $none -a graph -d 'the references between keys, for Graphviz'
$command -n $none -a keys -d 'the keys that the programs know'
$command -n $none -a findings -d 'the kinds of findings that check may report'
