#!/bin/sh
# A short tour of the tool vaxo057 on its demo collection, for `make run`:
# the document's make-up, a filtered and sorted view, a search, and its
# JSON written and read back into a file that is checked and compared with
# the original. Usage: tour.sh TOOL FOLDER
set -e
tool=$(cd "$(dirname "$1")" && pwd)/$(basename "$1")
mkdir -p "$2"
cd "$2"

# Prints the command, its arguments quoted where they need it, then runs it.
run() {
  printf '\n$ vaxo057'
  for arg in "$@"; do
    case $arg in
      *[\ \>\<\"]*) printf " '%s'" "$arg" ;;
      *) printf ' %s' "$arg" ;;
    esac
  done
  printf '\n'
  "$tool" "$@"
}

run demo books.vxo
run info books.vxo
run show books.vxo --columns Title,Author,Year,Genre,Rating --where 'Year > 1950' \
  --where 'Genre is Science Fiction,Fantasy' --sort Rating:desc --sort Year --limit 10
run show books.vxo --columns 'Title,Lent to' --where 'Lent to has data' --any 'Genre is Classic' \
  --any 'Year < 1900' --limit 5
run find books.vxo 'earthsea'
run export books.vxo --format json -o books.json
run import books.json -o copy.vxo
run check copy.vxo
cmp books.vxo copy.vxo && printf '\ncopy.vxo is books.vxo byte for byte (files in %s)\n' "$(pwd)"
