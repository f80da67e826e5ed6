// SPDX-License-Identifier: MIT
// Loads an LXC configuration with the real library and prints what it has read.
//
//     lxc-reader FILE KEY...
//
// Prints "KEY = VALUE" for each line of each key's value. Ends with status 1 where the library
// refuses the file, with 2 where it does not know a key.
#include <lxc/lxccontainer.h>
#include <stdbool.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

// The value of a key, to be freed, or null.
static char* read_item(struct lxc_container* container, const char* key) {
  const int length = container->get_config_item(container, key, NULL, 0);
  if (length < 0) {
    return NULL;
  }
  char* const value = calloc((size_t)length + 1, 1);
  if (value != NULL && length > 0) {
    container->get_config_item(container, key, value, length + 1);
  }
  return value;
}

static bool print_item(struct lxc_container* container, const char* key) {
  char* const value = read_item(container, key);
  if (value == NULL) {
    fprintf(stderr, "%s: unknown key\n", key);
    return false;
  }
  for (const char* line = value; *line != '\0';) {
    const size_t length = strcspn(line, "\n");
    printf("%s = %.*s\n", key, (int)length, line);
    line += length + (line[length] == '\n');
  }
  free(value);
  return true;
}

int main(int argc, char* argv[]) {
  if (argc < 2) {
    fprintf(stderr, "usage: %s FILE KEY...\n", argv[0]);
    return 2;
  }
  struct lxc_container* const container = lxc_container_new("reader", "/tmp");
  if (container == NULL) {
    fprintf(stderr, "no container\n");
    return 2;
  }
  int status = 0;
  if (!container->load_config(container, argv[1])) {
    fprintf(stderr, "%s: refused\n", argv[1]);
    status = 1;
  }
  for (int i = 2; i < argc && status == 0; ++i) {
    status = print_item(container, argv[i]) ? 0 : 2;
  }
  lxc_container_put(container);
  return status;
}
