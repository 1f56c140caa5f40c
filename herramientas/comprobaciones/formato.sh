# Todo el C++ está como lo deja clang-format.
set -eu
find . -path ./build -prune -o \( -name '*.cpp' -o -name '*.h' \) -print0 |
  xargs -0 clang-format --dry-run --Werror
