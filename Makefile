# The front door: everything here also works on a bare Debian 12 or 13.
.DEFAULT_GOAL := build
.PHONY: build run test bench-fleet check asan ubsan tsan threads coverage fuzz bench time-limits soak check-instructions tidy \
    check-structure setup setup-clang clean format transcripts

build: build/build.ninja
	@cmake --build build --target kalvex kalvex_cli

run: build
	@build/bin/kalvex inventory --simulated

test: build
	@cmake --build build
	@ctest --test-dir build --output-on-failure --parallel 2

# Builds and runs one test program: make check ONLY=log_unit_test. Without ONLY it names them.
check: build/build.ninja
ifdef ONLY
	@cmake --build build --target $(ONLY)
	@build/tests/$(ONLY) --gtest_brief=1 --gtest_filter='$(or $(CASES),*)'
else
	@echo "make check ONLY=PROGRAM [CASES='Suite.*'], where PROGRAM is one of:"
	@cmake --build build --target help | sed -n 's/^\([a-z0-9_]*_test\): phony$$/  \1/p'
endif

# Prints how fast everything is and writes build/bench.json.
bench: build/build.ninja
	@cmake -B build -DKALVEX_BUILD_BENCHMARKS=ON >/dev/null
	@cmake --build build --target kalvex_bench
	@build/bin/kalvex_bench --json build/bench.json

# Prints how near a fleet's run is to what its hosts themselves cost.
bench-fleet: build
	@scripts/bench_fleet build/bin/kalvex

# Prints how exactly limits, a deadline and cancelling end calls to hosts that stall, and fails when
# one is late.
time-limits: build/build.ninja
	@cmake -B build -DKALVEX_BUILD_BENCHMARKS=ON >/dev/null
	@cmake --build build --target time_limits
	@build/bin/time_limits

# Reads faulty hosts for MINUTES and fails when memory or descriptors grow.
MINUTES ?= 1
soak: build/build.ninja
	@cmake -B build -DKALVEX_BUILD_BENCHMARKS=ON >/dev/null
	@cmake --build build --target soak
	@GLIBC_TUNABLES=glibc.malloc.tcache_count=0 build/bin/soak --minutes $(MINUTES)

# Fails when decoding takes a tenth more instructions than it did.
check-instructions: build/build.ninja
	@cmake -B build -DKALVEX_BUILD_BENCHMARKS=ON >/dev/null
	@cmake --build build --target decode_reply
	@scripts/check_instructions build/bin/decode_reply

# The whole suite under sanitizers. Clang compiles for them in little more than half of GCC's time.
asan ubsan tsan: setup-clang
	@cmake --preset $@
	@cmake --build --preset $@
	@ctest --preset $@ --parallel 2

# A host read on many threads at once, under ThreadSanitizer.
threads: setup-clang
	@cmake --preset tsan
	@cmake --build --preset tsan --target many_threads_test cimclient_object_model_test
	@ctest --preset tsan --tests-regex '^(ManyThreads|Arena)'

# Looks for the mistakes that .clang-tidy names. Nothing is built for it.
tidy:
	@scripts/setup clang clang-tidy
	@cmake --preset tidy >/dev/null
	@scripts/tidy build/tidy

# Fails when a room of src includes from one that it may not use, or a text has a word that the project
# does not use.
check-structure:
	@scripts/setup python3
	@scripts/check_structure
	@scripts/check_words

# Prints which share of the lines of the client and of the access to it the suite runs.
coverage:
	@scripts/setup gcovr
	@cmake --preset coverage
	@cmake --build --preset coverage
	@find build/coverage -name '*.gcda' -delete
	@ctest --preset coverage --parallel 2
	@gcovr --root . build/coverage/src build/coverage/tests build/coverage/fuzz \
	    --exclude-throw-branches --filter src/cimclient --filter src/common/cimom --print-summary \
	    --output build/coverage/lines.txt

# Looks for inputs that do harm, for SECONDS with each fuzzer.
SECONDS ?= 60
fuzz: setup-clang
	@cmake --preset fuzz
	@cmake --build --preset fuzz
	@scripts/fuzz $(SECONDS)

# Rewrites the expected logs and shows what changed, for review.
transcripts: build
	@cmake --build build --target write_transcripts
	@build/tests/write_transcripts tests/data/transcripts
	@git --no-pager diff -- tests/data/transcripts
	@git status --short -- tests/data/transcripts

setup:
	@scripts/setup

setup-clang:
	@scripts/setup clang clang-rt llvm

build/build.ninja: | setup
	@cmake --preset release

format:
	@scripts/setup clang-format
	@git ls-files '*.h' '*.cpp' | xargs clang-format -i

clean:
	@rm -rf build
