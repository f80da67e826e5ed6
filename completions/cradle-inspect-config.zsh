#compdef cradle-inspect-config
# SPDX-License-Identifier: MIT
# Completion of cradle-inspect-config for zsh.

_cradle_inspect_user_ids() {
  local -a ids
  local line
  for line in ${(f)"$(_call_program users getent passwd)"}; do
    ids+=("${${(s.:.)line}[3]}:${${(s.:.)line}[1]}")
  done
  _describe -t users 'user id' ids
}

_cradle_inspect_commands() {
  local -a commands=(
    'files:what a run reads, runs and copies, in its order, and what it passes over'
    'show:the merged configuration, each value with its file and line'
    'explain:all that happened to a key, and what becomes of it'
    'check:what is wrong or doubtful, and what to do about it'
    'diff:what a run would change in an output file of the type'
    'graph:the references between keys, for Graphviz'
    'keys:the keys that the programs know'
    'findings:the kinds of findings that check may report'
  )
  _describe -t commands command commands
}

_cradle_inspect_operand() {
  [[ ${line[1]} == diff ]] && _files
}

local -a line
_arguments -s -S \
  '*'{-c+,--config=}'[read this directory; may be repeated (default /etc/cradle.conf.d)]:directory:_files -/' \
  '*'{-C+,--configs=}'[read these directories]:directories:_sequence -s \: _files -/' \
  {-t+,--type=}'[see what a run of this type sees: config (default), lxc or property]:type:(config lxc property)' \
  {-u+,--user-id=}'[the user of the run (default: the active user of seat0)]:user id:_cradle_inspect_user_ids' \
  {-i+,--instance=}'[the instance of the run (default: default)]:name: ' \
  {-b+,--base-uid=}'[the base uid of the run (default: 0)]:user id:_cradle_inspect_user_ids' \
  {-f+,--format=}'[text (default) or json; for graph also svg]:format:(text json svg)' \
  '--color=[auto (default), always or never]:when:(auto always never)' \
  {-a,--all}'[show: also what was overridden or cleared; graph: also keys on their own]' \
  '--run[start the commands and hooks that a run would start]' \
  '--strict[check: warnings count as well]' \
  {-h,--help}'[show this help]' \
  {-V,--version}'[show the version]' \
  '1:command:_cradle_inspect_commands' \
  '2:operand:_cradle_inspect_operand'
