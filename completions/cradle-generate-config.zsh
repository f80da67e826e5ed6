#compdef cradle-generate-config
# SPDX-License-Identifier: MIT
# Completion of cradle-generate-config for zsh.

_cradle_user_ids() {
  local -a ids
  local line
  for line in ${(f)"$(_call_program users getent passwd)"}; do
    ids+=("${${(s.:.)line}[3]}:${${(s.:.)line}[1]}")
  done
  _describe -t users 'user id' ids
}

_arguments -A '-*' -S \
  '--type[Generate a config, lxc or property file. Defaults to config file.]:type:(config lxc property)' \
  '*--config[Directory to read. Defaults to /etc/cradle.conf.d]:directory:_files -/' \
  "*--configs[Directories to read, separated by ':'.]:directories:_sequence -s \: _files -/" \
  '--user-id[UID for user. Defaults to seat0 active user.]:user id:_cradle_user_ids' \
  '--instance[Instance name for the container.]:name: ' \
  '--base-uid[UID as which cradle runs. Defaults to 0.]:user id:_cradle_user_ids' \
  '--log-level[Log level. Defaults to warning.]:level:(critical error warning info debug)' \
  '1:output file:_files'
