#!/bin/sh
# Installs a build into an empty folder and takes it up there as a stranger would: a small
# program by find_package, the same by pkg-config and with the sources in its own tree, the two
# examples, and the command. The program has a folder host/ of its own in front.
#
#     check.sh SOURCE BUILD CXX
set -eu
source=$1 build=$2 cxx=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
say() { echo "== $*"; }
expect() { # NAME TEXT: the output in $work/out holds the text
    grep -qF -- "$2" "$work/out" || { echo "$1: \"$2\" is missing in:"; cat "$work/out"; exit 1; }
}

say "install"
cmake --install "$build" --prefix "$work/made" > "$work/log"
# The tree must not know where it was made.
mv "$work/made" "$work/tree"
(cd "$work/tree" && find . -maxdepth 3 | sort)

cp -r "$source/tests/package/consumer" "$work/consumer"
consume() { # NAME OPTION...: configures, builds and runs it
    name=$1
    shift
    say "$name"
    cmake -S "$work/consumer" -B "$work/$name" -DCMAKE_CXX_COMPILER="$cxx" "$@" \
        ${CARETWELL_CONSUMER_FLAGS:+-DCMAKE_CXX_FLAGS="$CARETWELL_CONSUMER_FLAGS"} > "$work/log"
    cmake --build "$work/$name" -j2 >> "$work/log" || { cat "$work/log"; exit 1; }
    "$work/$name/consumer" > "$work/out"
    expect "$name" li
}
consume find_package -DCMAKE_PREFIX_PATH="$work/tree" -DCMAKE_BUILD_TYPE=Release
# The sources are the same whatever was installed: the plain build tries them.
if [ -z "${CARETWELL_CONSUMER_FLAGS:-}" ] && [ -z "$(find "$work/tree" -name 'libcaretwell.so')" ]; then
    launcher=$(command -v ccache || true)
    consume add_subdirectory -DCARETWELL_SOURCE="$source" -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_COMPILER_LAUNCHER="$launcher" \
        -DCMAKE_DISABLE_FIND_PACKAGE_CLI11=ON -DCMAKE_DISABLE_FIND_PACKAGE_nlohmann_json=ON -DCMAKE_DISABLE_FIND_PACKAGE_GTest=ON
fi

say "pkg-config"
PKG_CONFIG_PATH=$(dirname "$(find "$work/tree" -name caretwell.pc)")
export PKG_CONFIG_PATH
$cxx -std=c++20 -O2 ${CARETWELL_CONSUMER_FLAGS:-} -I"$work/consumer" $(pkg-config --cflags caretwell) \
    -DSCHEMAS="\"$(pkg-config --variable=schemadir caretwell)\"" "$work/consumer/main.cpp" -o "$work/by-pkg-config" \
    $(pkg-config --libs caretwell)
LD_LIBRARY_PATH=$(pkg-config --variable=libdir caretwell) "$work/by-pkg-config" > "$work/out"
expect pkg-config li

say "every header by itself"
(cd "$work/tree/include" && find caretwell -name '*.h' | sort) > "$work/headers"
while read -r header; do
    echo "#include <$header>" | $cxx -std=c++20 -Wall -Wextra -Werror -fsyntax-only -I"$work/consumer" $(pkg-config --cflags caretwell) -x c++ -
done < "$work/headers"

say "examples"
for example in minimal-host outline; do
    cmake -S "$source/examples/$example" -B "$work/$example" -DCMAKE_PREFIX_PATH="$work/tree" \
        -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_COMPILER="$cxx" ${CARETWELL_CONSUMER_FLAGS:+-DCMAKE_CXX_FLAGS="$CARETWELL_CONSUMER_FLAGS"} > "$work/log"
    cmake --build "$work/$example" > "$work/log" || { cat "$work/log"; exit 1; }
done
schemas=$work/tree/share/caretwell/schemas
"$work/minimal-host/example_minimal_host" "$schemas" > "$work/out"
expect minimal-host '<li><a target="_blank"'
expect minimal-host 'a { color:^ }'
"$work/outline/example_outline" "$schemas" "$source/examples/page.html" > "$work/out"
expect outline 'Winter check'

say "command"
printf '<ul><^' | "$work/tree/bin/caretwell" complete - --name page.html --mark '^' > "$work/out"
expect command li
test -f "$schemas/asp schemas/asp.xsd"
test -f "$work/tree/share/doc/caretwell/LICENSE"
test -f "$work/tree/share/doc/caretwell/docs/embedding.md"
echo "== all well"
