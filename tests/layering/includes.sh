#!/usr/bin/env bash
# Arrows point one way: every include of the library stands in the list of what its folder may name,
# and the dynamic library shows its initialiser alone. Usage: includes.sh SOURCE_FOLDER LIBRARY
set -euo pipefail
cd "$1/src"
status=0

# may_include FILES PATTERN: what the includes in quotes of FILES must match.
may_include() {
  local line
  while IFS= read -r line; do
    echo "not allowed: src/$line"
    status=1
  done < <(grep -nHE '#include "' $1 | grep -vE "#include \"($2)" || true)
}

references='hooks/(class_references|previous_implementations)\.h'
may_include 'platform/*' 'platform/'
may_include 'support/*' 'support/'
may_include 'hooks/class_references.* hooks/previous_implementations.*' "hooks/|platform/"
may_include 'settings/settings_store.*' 'settings/settings_store|platform/|support/'
may_include 'colors/*' "colors/|settings/settings_store|$references|platform/|support/"
may_include 'settings/theme_data.*' 'settings/|colors/|platform/|support/'
may_include 'styles/*' "styles/|settings/|$references|platform/|support/"
may_include 'backgrounds/*' "backgrounds/|styles/|settings/|$references|platform/|support/"
may_include 'hooks/*' 'hooks/|backgrounds/|styles/|colors/|settings/|platform/|support/'

if grep -rnE '#include [<"](\.\./|host/|tools/)' .; then status=1; fi
visible="$(nm -D --defined-only "$2" | awk '{print $3}')"
if [ "$visible" != PMLibraryLoad ]; then
  echo "the library shows: $visible"
  status=1
fi
exit $status
