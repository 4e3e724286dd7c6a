# The project's commands. `make test` configures, builds and runs the whole
# test suite from a fresh clone; `make run` builds the tool vaxo057 alone
# and takes a tour of it.

BUILD_DIR ?= build
SANITIZE_DIR ?= build-sanitize
FUZZ_DIR ?= build-fuzz
RUN_DIR ?= build-run
FUZZ_SECONDS ?= 30
FUZZ_SMOKE_SECONDS ?= 15
JOBS ?= $(shell nproc 2>/dev/null || echo 2)

CMAKE_FLAGS = -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVAXO057_WARNINGS_AS_ERRORS=ON
SANITIZE_FLAGS = -DCMAKE_BUILD_TYPE=Debug -DVAXO057_WARNINGS_AS_ERRORS=ON -DVAXO057_SANITIZE=ON \
                 -DVAXO057_BUILD_BENCHMARKS=OFF -DVAXO057_BUILD_TOOLS=OFF

FUZZ_FLAGS = -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVAXO057_WARNINGS_AS_ERRORS=ON \
             -DVAXO057_BUILD_FUZZERS=ON -DVAXO057_BUILD_TESTS=OFF -DVAXO057_BUILD_BENCHMARKS=OFF \
             -DVAXO057_BUILD_TOOLS=OFF
FUZZ_RUN_FLAGS = -max_total_time=$(FUZZ_SECONDS) -rss_limit_mb=2048 -malloc_limit_mb=512 -timeout=10

export ASAN_OPTIONS ?= detect_leaks=1:abort_on_error=1:strict_string_checks=1
export UBSAN_OPTIONS ?= halt_on_error=1:print_stacktrace=1

.PHONY: all build test test-sanitize fuzz fuzz-smoke run bench clean package-check coverage test-ratio

all: build

build:
	cmake -S . -B $(BUILD_DIR) $(CMAKE_FLAGS)
	cmake --build $(BUILD_DIR) -j $(JOBS)

test: build
	ctest --test-dir $(BUILD_DIR) --output-on-failure -j $(JOBS)

test-sanitize:
	cmake -S . -B $(SANITIZE_DIR) $(SANITIZE_FLAGS)
	cmake --build $(SANITIZE_DIR) -j $(JOBS)
	ctest --test-dir $(SANITIZE_DIR) --output-on-failure -j $(JOBS)

# Builds the fuzzers with clang, writes their seed corpus and runs every
# *_fuzzer for FUZZ_SECONDS over its seeds and its saved inputs under
# fuzz/regressions/ (fuzz-smoke: FUZZ_SMOKE_SECONDS, for CI). A finding
# stops the run and leaves its input in $(FUZZ_DIR)/artifacts; the runs a
# target reached are in $(FUZZ_DIR)/logs.
fuzz-smoke: FUZZ_SECONDS = $(FUZZ_SMOKE_SECONDS)
fuzz fuzz-smoke:
	cmake -S . -B $(FUZZ_DIR) $(FUZZ_FLAGS)
	cmake --build $(FUZZ_DIR) -j $(JOBS)
	$(FUZZ_DIR)/fuzz/vaxo057-fuzz-seeds $(FUZZ_DIR)/corpus
	mkdir -p $(FUZZ_DIR)/artifacts $(FUZZ_DIR)/logs
	@for f in $(FUZZ_DIR)/fuzz/*_fuzzer; do n=$$(basename $$f); mkdir -p $(FUZZ_DIR)/corpus/$$n; \
	  $$f $(FUZZ_RUN_FLAGS) -artifact_prefix=$(FUZZ_DIR)/artifacts/$$n- $(FUZZ_DIR)/corpus/$$n \
	    $$( [ -d fuzz/regressions/$$n ] && echo fuzz/regressions/$$n ) > $(FUZZ_DIR)/logs/$$n.log 2>&1 \
	    || { tail -n 60 $(FUZZ_DIR)/logs/$$n.log; echo "== $$n: FAILED, input in $(FUZZ_DIR)/artifacts"; exit 1; }; \
	  echo "== $$n: $$(grep -o 'Done [0-9]* runs in [0-9]* second' $(FUZZ_DIR)/logs/$$n.log)"; done

# Installs the build into a fresh prefix and builds and runs the consumer
# under examples/ against it: once through find_package, once through
# pkg-config.
PACKAGE_DIR ?= $(BUILD_DIR)/package-check
package-check: build
	rm -rf $(PACKAGE_DIR)
	cmake --install $(BUILD_DIR) --prefix $(PACKAGE_DIR)/prefix
	cmake -S examples/consumer -B $(PACKAGE_DIR)/cmake -DCMAKE_PREFIX_PATH=$(abspath $(PACKAGE_DIR))/prefix
	cmake --build $(PACKAGE_DIR)/cmake
	$(PACKAGE_DIR)/cmake/vaxo057-consumer
	PKG_CONFIG_PATH=$(abspath $(PACKAGE_DIR))/prefix/lib/pkgconfig; export PKG_CONFIG_PATH; \
	  $(CXX) -std=c++17 -Wall -Werror -o $(PACKAGE_DIR)/pkgconfig-consumer examples/consumer/main.cpp \
	    $$(pkg-config --cflags --libs vaxo057) -Wl,-rpath,$$(pkg-config --variable=libdir vaxo057)
	$(PACKAGE_DIR)/pkgconfig-consumer

# Only what the tool needs (no tests, benchmarks or example), in a folder
# of its own; the tour writes its files to $(RUN_DIR)/tour.
RUN_FLAGS = -DCMAKE_BUILD_TYPE=Release -DVAXO057_BUILD_TESTS=OFF -DVAXO057_BUILD_BENCHMARKS=OFF -DVAXO057_INSTALL=OFF
run:
	cmake -S . -B $(RUN_DIR) $(RUN_FLAGS)
	cmake --build $(RUN_DIR) -j $(JOBS) --target vaxo057-cli
	cli/tour.sh $(RUN_DIR)/cli/vaxo057 $(RUN_DIR)/tour

# Line coverage of the library by the whole suite, per source folder
# (needs gcovr). The counters start from zero on every run; keep a copy of
# $(COVERAGE_DIR)/coverage.json to see which lines a change leaves uncovered
# (tools/testfigures.py lost BEFORE.json AFTER.json).
COVERAGE_DIR ?= build-coverage
COVERAGE_FLAGS = -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS=--coverage \
                 -DCMAKE_EXE_LINKER_FLAGS=--coverage -DCMAKE_SHARED_LINKER_FLAGS=--coverage \
                 -DVAXO057_BUILD_BENCHMARKS=OFF -DVAXO057_BUILD_FUZZERS=OFF -DVAXO057_BUILD_TOOLS=ON
coverage:
	cmake -S . -B $(COVERAGE_DIR) $(COVERAGE_FLAGS)
	cmake --build $(COVERAGE_DIR) -j $(JOBS)
	find $(COVERAGE_DIR) -name '*.gcda' -delete
	ctest --test-dir $(COVERAGE_DIR) --output-on-failure -j $(JOBS)
	gcovr -r . $(COVERAGE_DIR) -j $(JOBS) --exclude 'tests/' --exclude 'bench/' --exclude 'fuzz/' \
	  --exclude 'examples/' --exclude 'build[^/]*/' --json-summary-pretty \
	  --json-summary $(COVERAGE_DIR)/coverage-summary.json --json $(COVERAGE_DIR)/coverage.json \
	  --txt $(COVERAGE_DIR)/coverage.txt
	python3 tools/testfigures.py coverage $(COVERAGE_DIR)/coverage-summary.json

# Lines of .cpp/.h under tests/ against the library, tools and examples.
test-ratio:
	@python3 tools/testfigures.py ratio

bench: build
	@for b in $(BUILD_DIR)/bench/*_bench; do echo "== $$b"; $$b; done

clean:
	rm -rf $(BUILD_DIR) $(SANITIZE_DIR) $(FUZZ_DIR) $(RUN_DIR) $(COVERAGE_DIR)
