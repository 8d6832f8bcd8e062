#!/bin/bash -eu
# SPDX-License-Identifier: Apache-2.0
# Builds the fuzz targets with the compiler, the flags and the engine of the surroundings ($CC, $CXX, $CXXFLAGS,
# $LIB_FUZZING_ENGINE) and puts them into $OUT, with dictionaries, options and corpora. By hand:
#     CXX=clang++ CXXFLAGS=-fsanitize=fuzzer-no-link,address LIB_FUZZING_ENGINE=-fsanitize=fuzzer \
#         SRC=.. OUT=build/out WORK=build/oss fuzz/oss-fuzz/build.sh
cd "$(dirname "$0")/../.."
[ -f CMakeLists.txt ] || cd "$SRC/zantrel"

# Statically, since nothing is installed where the programs run.
cmake -S . -B "$WORK" -G Ninja -DCMAKE_CXX_COMPILER="$CXX" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DBUILD_SHARED_LIBS=OFF -DEXPAT_USE_STATIC_LIBS=ON -DZANTREL_BUILD_FUZZ=ON -DZANTREL_BUILD_TESTS=OFF \
    -DZANTREL_BUILD_EXAMPLES=OFF -DZANTREL_BUILD_TOOLS=OFF -DZANTREL_FUZZING_ENGINE="$LIB_FUZZING_ENGINE"
cmake --build "$WORK" --target zantrel_fuzz

mkdir -p "$OUT"
for corpus in fuzz/corpora/*; do
    target=${corpus##*/}
    cp "$WORK/zantrel_fuzz_$target" "$OUT"
    if [ -f "fuzz/$target.dict" ]; then
        cp "fuzz/$target.dict" "$OUT/zantrel_fuzz_$target.dict"
    else
        "$WORK/zantrel_fuzz_corpus" dictionary "$target" >"$OUT/zantrel_fuzz_$target.dict"
    fi
    printf '[libfuzzer]\nmax_len = 1024\nrss_limit_mb = 256\n' >"$OUT/zantrel_fuzz_$target.options"
    rm -rf "$WORK/corpus" "$OUT/zantrel_fuzz_${target}_seed_corpus.zip"
    mkdir "$WORK/corpus"
    "$WORK/zantrel_fuzz_corpus" unpack "$corpus" "$WORK/corpus"
    zip -q -j -r "$OUT/zantrel_fuzz_${target}_seed_corpus.zip" "$WORK/corpus"
done
