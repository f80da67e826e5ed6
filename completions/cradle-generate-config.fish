# SPDX-License-Identifier: MIT
# Completion of cradle-generate-config for fish.

# The ids of all users, with their names.
function __cradle_user_ids
    getent passwd | while read -d : --local name _ id _
        printf '%s\t%s\n' $id $name
    end
end

# The directories of a list with colons between them: the last one is completed.
function __cradle_directories
    set -l list (commandline -ct)
    set -l done (string match -r '.*:' -- $list)
    for directory in (__fish_complete_directories (string replace -r '.*:' '' -- $list))
        printf '%s%s\n' "$done" $directory
    end
end

# Whether the next argument may be an option, or the output file. Every option takes the argument
# behind it, whatever that is.
function __cradle_generate_config_awaits
    set -l words (commandline -opc)[2..]
    while string match -q -- '--?*' $words[1]
        set -e words[1..2]
    end
    switch $argv[1]
        case option
            test (count $words) -eq 0
        case file
            test (count $words) -eq 0 -o "$words" = --
    end
end

set -l command complete -c cradle-generate-config
set -l option $command -n '__cradle_generate_config_awaits option' -x -l

$command -f
$command -n '__cradle_generate_config_awaits file' -F
$option type -a 'config lxc property' -d 'Generate a config, lxc or property file. Defaults to config file.'
$option config -a '(__fish_complete_directories)' -d 'Directory to read. Defaults to /etc/cradle.conf.d'
$option configs -a '(__cradle_directories)' -d 'Directories to read, separated by \':\'.'
$option user-id -a '(__cradle_user_ids)' -d 'UID for user. Defaults to seat0 active user.'
$option instance -d 'Instance name for the container.'
$option base-uid -a '(__cradle_user_ids)' -d 'UID as which cradle runs. Defaults to 0.'
$option log-level -a 'critical error warning info debug' -d 'Log level. Defaults to warning.'
