/* The peer of read_theme: reads a property list of either form and asks for its last colour's name.
   Usage: read_libplist FILE */

#include <plist/plist.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/stat.h>

static char *read_file(const char *path, long *size) {
  struct stat status;
  FILE *file = fopen(path, "rb");
  if (!file || fstat(fileno(file), &status) != 0) return NULL;
  char *bytes = malloc((size_t)status.st_size);
  *size = bytes ? (long)fread(bytes, 1, (size_t)status.st_size, file) : 0;
  fclose(file);
  return bytes;
}

int main(int argc, char **argv) {
  if (argc != 2) return 2;
  long size = 0;
  char *bytes = read_file(argv[1], &size);
  if (!bytes) return 1;
  plist_t root = NULL;
  plist_from_memory(bytes, (uint32_t)size, &root);
  plist_t colors = root ? plist_dict_get_item(root, "CustomColor") : NULL;
  plist_t last = colors ? plist_array_get_item(colors, plist_array_get_size(colors) - 1) : NULL;
  /* The process ends here: letting go of the values would be time spent for nothing. */
  return last && plist_array_get_size(last) == 2 ? 0 : 1;
}
