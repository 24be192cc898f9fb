#!/bin/sh
# Only the functions built for the thirty-two-byte block tests (the wide page
# walk and its form and anchor readers) hold AVX instructions: the engine
# enters them only after asking the processor, and everything else must run
# on any x86-64 processor. Disassembles the program and names every other
# function holding a VEX-encoded instruction.
#   tests/wide_code_test.sh OBJDUMP PROGRAM
set -eu
objdump=$1
program=$2
listing=$("$objdump" -d -C --no-show-raw-insn "$program" | awk '
    /^[0-9a-f]+ <.*>:$/ { fn = $0; next }
    /\tv[a-z0-9]+( |$)/ { print fn }' | sort | uniq -c)
wide=$(printf '%s\n' "$listing" | grep -c -E 'WalkPageWide|TextReaders<true>' || true)
others=$(printf '%s\n' "$listing" | grep -v -E 'WalkPageWide|TextReaders<true>' | grep . || true)
if [ -n "$others" ]; then
    echo "AVX instructions outside the wide functions:"
    printf '%s\n' "$others"
    exit 1
fi
if [ "$wide" -lt 3 ]; then
    echo "the wide page walk and readers were not found in $program"
    exit 1
fi
echo "AVX instructions in the wide functions only ($wide functions)"
