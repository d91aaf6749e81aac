#!/usr/bin/env bash
# The program and the library are built so that a fault in them is harder to use: read off the files
# themselves. Usage: hardened.sh PROGRAM LIBRARY
set -euo pipefail
export LC_ALL=C
program="$1" library="$2"
status=0

# expect WHAT FILE TEXT PATTERN: a line of the text has the pattern.
expect() {
  if ! grep -qE -- "$4" <<<"$3"; then
    echo "$2: no $1"
    status=1
  fi
}
# refuse WHAT FILE TEXT PATTERN: no line has.
refuse() {
  if grep -qE -- "$4" <<<"$3"; then
    echo "$2: $1"
    status=1
  fi
}

for file in "$program" "$library"; do
  segments="$(readelf -lW "$file")"
  dynamic="$(readelf -dW "$file")"
  symbols="$(readelf --dyn-syms -W "$file")"
  expect 'tables of addresses that are read-only' "$file" "$segments" 'GNU_RELRO'
  expect 'binding at the start' "$file" "$dynamic" 'BIND_NOW|Flags:.* NOW'
  expect 'stack that is not executable' "$file" "$segments" 'GNU_STACK .* RW +0x'
  refuse 'a segment that can be written and executed' "$file" "$segments" 'LOAD .* RWE '
  refuse 'code that is changed at the start' "$file" "$dynamic" 'TEXTREL'
  refuse 'a path for libraries of its own' "$file" "$dynamic" 'RPATH|RUNPATH'
  expect 'protection of the stack' "$file" "$symbols" 'UND __stack_chk_fail'
done
expect 'position-independent program' "$program" "$(readelf -hW "$program")" 'Type: +DYN'
expect 'checks of buffers' "$program" "$(readelf --dyn-syms -W "$program")" \
  'UND __(mem|str|read|vs?n?printf|fprintf|snprintf|readlinkat|poll)[a-z]*_chk'

# The first instruction of a function that can be called from elsewhere says so.
case "$(uname -m)" in
  x86_64) mark='endbr64' ;;
  aarch64) mark='paciasp|bti' ;;
  *) exit $status ;;
esac
entry="$(objdump -d --no-show-raw-insn --disassemble=PMLibraryLoad "$library" |
  sed -n '/<PMLibraryLoad>:/{n;p}')"
expect 'mark where jumps may lead' "$library" "$entry" "$mark"
exit $status
