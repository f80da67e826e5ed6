# SPDX-License-Identifier: MIT
# The interface of the configuration library: the headers that other programs may include. They are
# about reading layered configurations, writing such files, and the messages about both; where values
# come from and how files are found stays inside.
#
# A public header includes no other ones, and by their place beside its own, which works here as well
# as where they are installed. A class or function in it that is not inline is marked with
# CRADLE_CONFIG_API, and docs/library.md promises that it stays.
set(PUBLIC_HEADERS
  config_parser.h
  config_value.h
  config_writer.h
  environment_file.h
  export.h
  generator_helpers.h
  library_logger.h
  logging/level.h
  logging/log_message.h
  logging/logger_config.h
  logging/target.h
  mount_entry.h
  value_mode.h
)
