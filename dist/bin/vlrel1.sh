#!/bin/sh
# vlrel1.sh [SOURCE-SUFFIX]
#
# The builder starts this, in the project directory, when it makes a release
# copy of the project in the subdirectory "release". It makes sure that
# directory exists and removes object files of an earlier release build
# (files ending in .o next to sources ending in SOURCE-SUFFIX, default .c), so
# that vlrel2.sh builds the release program from scratch.
set -u
suffix=${1:-.c}
mkdir -p release || exit 1
for src in release/*"$suffix"; do
    [ -f "$src" ] || continue
    rm -f -- "${src%"$suffix"}.o"
done
exit 0
