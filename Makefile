# The front door. Each target is a line or two over a preset of CMakePresets.json.

# All that building and testing need on Debian 12.
packages := g++ make cmake ninja-build pkg-config python3 libyaml-cpp-dev libcli11-dev nlohmann-json3-dev libgtest-dev groff-base
missing = $(shell for p in $(packages); do dpkg -s $$p >/dev/null 2>&1 || printf '%s ' $$p; done)
as_root = $(if $(filter 0,$(shell id -u)),,sudo)
prefix ?= /usr/local

.PHONY: setup demo test tsan coverage bench fuzz tidy install clean

# How long each fuzzer runs, in seconds.
fuzz_seconds ?= 60

setup:
	@command -v dpkg >/dev/null || { echo "Not a Debian system: install the packages that README.md names."; exit 0; }; \
	if [ -n "$(missing)" ]; then \
	    echo "Installing: $(missing)"; \
	    $(as_root) apt-get update -qq && \
	    DEBIAN_FRONTEND=noninteractive $(as_root) apt-get install -y -qq --no-install-recommends $(missing); \
	fi

build/release/cli/quor-gjf: setup
	cmake --preset release && cmake --build --preset release

demo: build/release/cli/quor-gjf
	build/release/cli/quor-gjf report examples/jobs/*.gjf examples/jobs/*.com

test: setup
	cmake --preset dev && cmake --build --preset dev && ctest --preset dev
	cmake --preset asan && cmake --build --preset asan && ctest --preset asan

tsan: setup
	cmake --preset tsan && cmake --build --preset tsan && ctest --preset tsan

coverage: setup
	cmake --preset coverage && cmake --build --preset coverage && ctest --preset coverage

# Needs libbenchmark-dev.
bench: setup
	cmake --preset bench && cmake --build --preset bench
	QUOR_G16_ROUTE_SCHEMA_YAML=resources/schemas/input/gaussian_route.yaml build/bench/benchmarks/library_benchmark

# Needs clang-14 and libclang-rt-14-dev.
fuzz: setup
	cmake --preset fuzz && cmake --build --preset fuzz && mkdir -p build/fuzz/found
	QUOR_G16_ROUTE_SCHEMA_YAML=resources/schemas/input/gaussian_route.yaml build/fuzz/fuzz/job_text_fuzzer \
	    -max_total_time=$(fuzz_seconds) -max_len=4000 -artifact_prefix=build/fuzz/ build/fuzz/found examples/jobs

# Needs clang-format-14 and clang-tidy-14.
tidy:
	git ls-files '*.cpp' '*.hpp' '*.h' | xargs clang-format-14 --dry-run --Werror
	cmake --preset tidy && git ls-files 'src/*.cpp' 'cli/*.cpp' | xargs -P 2 -n 4 clang-tidy-14 -p build/tidy --quiet --extra-arg=-Wno-unknown-warning-option

install: build/release/cli/quor-gjf
	cmake --install build/release --prefix $(prefix)

clean:
	rm -rf build
