#!/usr/bin/env bash
# Installs the built library into a temporary prefix, builds an outside project against it with
# find_package, runs it (and its interface-library program when the build has Qt), and checks the
# pkg-config file.
set -euo pipefail
build_dir=$1 source_dir=$2 extra_flags=${3:-} with_interface=${4:-OFF}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cmake --install "$build_dir" --prefix "$work/prefix" >/dev/null
# The installed headers hold the API only: no internal header, no detail namespace.
! grep -rlE 'namespace detail|Internal\.hpp' "$work/prefix/include" || { echo "internal names installed"; exit 1; }
cmake -S "$source_dir/tests/install/consumer" -B "$work/build" -G Ninja -DCMAKE_BUILD_TYPE=Debug \
  -DCMAKE_PREFIX_PATH="$work/prefix" -DCMAKE_CXX_FLAGS="$extra_flags" >/dev/null
cmake --build "$work/build" >/dev/null
output=$(env -u BV_RESOURCES "$work/build/consumer")
[[ "$output" == $'Paris\nZZ\nNY' ]] || { echo "unexpected output: $output"; exit 1; }
PKG_CONFIG_PATH="$work/prefix/lib/pkgconfig:$work/prefix/lib/x86_64-linux-gnu/pkgconfig" \
  pkg-config --libs brevant-cocoa-extensions | grep -q -- -lBrevantCocoaExtensions
# With Qt, the same package must also give Brevant::Interface to an outside project.
if [[ "$with_interface" == ON ]]; then
  cmake -S "$source_dir/tests/install/consumer" -B "$work/build-interface" -G Ninja -DCMAKE_BUILD_TYPE=Debug \
    -DCMAKE_PREFIX_PATH="$work/prefix" -DCMAKE_CXX_FLAGS="$extra_flags" -DBV_EXPECT_INTERFACE=ON >/dev/null
  cmake --build "$work/build-interface" --target consumer_interface >/dev/null
  output=$(QT_QPA_PLATFORM=offscreen "$work/build-interface/consumer_interface")
  [[ "$output" == FF336699 ]] || { echo "unexpected interface output: $output"; exit 1; }
fi
echo "installed package found, built and ran"
