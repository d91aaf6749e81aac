#!/usr/bin/env bash
# What is installed works from where it lies, and all of it is there.
# Usage: installed.sh CMAKE BUILD_FOLDER
set -euo pipefail
scratch="$(mktemp -d)"
trap 'rm -r -- "$scratch"' EXIT

"$1" --install "$2" --prefix "$scratch/usr" >"$scratch/log" || { cat "$scratch/log"; exit 1; }
cd "$scratch/usr"
for file in lib/prismal/libprismal.so share/doc/prismal/CHANGELOG.md \
  share/doc/prismal/docs/theme-format.md share/prismal/examples/Dusk.theme/theme.plist \
  share/prismal/examples/ci/theme.yml share/doc/prismal/examples/Dusk.theme/theme.plist \
  share/doc/prismal/changelog.gz share/bash-completion/completions/prismal \
  share/fish/vendor_completions.d/prismal.fish; do
  [ -s "$file" ] || { echo "missing: $file"; exit 1; }
done
[ -n "$(find share/zsh -name _prismal -size +0)" ] || { echo "missing: _prismal"; exit 1; }
[ ! -e share/prismal/examples/art ] || { echo "not for users: examples/art"; exit 1; }

# Without an option it is the library beside the program that is loaded.
export XDG_DATA_HOME="$scratch/home"
bin/prismal new "$scratch/Evening" >/dev/null
bin/prismal render --quiet "$scratch/Evening.theme" -o "$scratch/picture.png"
[ -s "$scratch/picture.png" ]
mv lib/prismal/libprismal.so lib/prismal/elsewhere
if bin/prismal render --quiet "$scratch/Evening.theme" -o "$scratch/other.png" 2>"$scratch/log"; then
  echo "drawn without its library"
  exit 1
fi
grep -q 'libprismal.so' "$scratch/log"

# A manual is searched by the line below its first heading.
for page in share/man/man1/prismal.1.gz share/man/man5/prismal-theme.5.gz; do
  [ -e "$page" ] || continue
  zcat "$page" >"$scratch/page"
  grep -qE '^prismal(-theme)? \\?- ' "$scratch/page" || { echo "no name: $page"; exit 1; }
  # Where columns run into each other, and where text is cut.
  command -v groff >/dev/null || continue
  groff -man -t -Kutf8 -Tutf8 -rLL=80n "$scratch/page" 2>"$scratch/log" >/dev/null
  if grep 'wider than line width' "$scratch/log"; then echo "too wide a table: $page"; exit 1; fi
done
