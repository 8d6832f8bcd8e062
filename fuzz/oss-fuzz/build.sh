#!/bin/bash -eu
# SPDX-License-Identifier: Apache-2.0
# Builds the fuzz targets with the compiler, the flags and the engine of the surroundings ($CXX, $CXXFLAGS,
# $LIB_FUZZING_ENGINE) and puts them into $OUT, with dictionaries, options and corpora; in between all is in $WORK.
# fuzz/README.md has how to call it by hand.
cd "$(dirname "$0")/../.."
[ -f CMakeLists.txt ] || cd "$SRC/zantrel"
WORK=${WORK:-$PWD/build/oss-fuzz}

# Statically, since nothing is installed where the programs run.
cmake -S . -B "$WORK" -G Ninja -DCMAKE_CXX_COMPILER="$CXX" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DBUILD_SHARED_LIBS=OFF \
    "-DEXPAT_LIBRARY=$(find /usr/lib /usr/local/lib -name libexpat.a -print -quit)" -DZANTREL_BUILD_FUZZ=ON \
    -DZANTREL_BUILD_TESTS=OFF -DZANTREL_BUILD_EXAMPLES=OFF -DZANTREL_BUILD_TOOLS=OFF \
    -DZANTREL_FUZZING_ENGINE="$LIB_FUZZING_ENGINE"
cmake --build "$WORK" --target zantrel_fuzz

mkdir -p "$OUT"
targets=$("$WORK/zantrel_fuzz_corpus" targets)
for target in $targets; do
    program=zantrel_fuzz_$target
    cp "$WORK/$program" "$OUT"
    if [ -f "fuzz/$target.dict" ]; then
        cp "fuzz/$target.dict" "$OUT/$program.dict"
    else
        "$WORK/zantrel_fuzz_corpus" dictionary "$target" >"$OUT/$program.dict"
    fi
    # The freed memory that is kept back leaves room for what documents take within the limit. Counting how often each
    # feature occurs takes longer than the documents do.
    printf '[libfuzzer]\nmax_len = 1024\nrss_limit_mb = 256\nentropic = 0\n\n[asan]\nquarantine_size_mb = 16\n' \
        >"$OUT/$program.options"
    rm -rf "$WORK/corpus" "$OUT/${program}_seed_corpus.zip"
    mkdir "$WORK/corpus"
    "$WORK/zantrel_fuzz_corpus" unpack "fuzz/corpora/$target" "$WORK/corpus"
    zip -q -j -r "$OUT/${program}_seed_corpus.zip" "$WORK/corpus"
done
