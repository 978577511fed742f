# The front door. Each target is a line or two over a preset of CMakePresets.json.

# All that building needs on Debian 12; and what the tests need beside it, the Python package's among them.
packages := g++ make cmake ninja-build pkg-config libyaml-cpp-dev libcli11-dev nlohmann-json3-dev libtomlplusplus-dev \
    zlib1g-dev liblzma-dev
test_packages := $(packages) python3 libgtest-dev groff-base locales python3-dev python3-pip python3-venv python3-setuptools python3-wheel \
    pybind11-dev python3-numpy python3-pytest python3-ase python3-pandas mypy \
    python3-jsonschema pre-commit git
verify_packages := $(test_packages) clang-14 libclang-rt-14-dev clang-format-14 clang-tidy-14 cppcheck gcovr
wanted = $(test_packages)
# The editors that tests start.
editor_packages := $(test_packages) vim neovim emacs-nox elpa-eglot
verify: wanted = $(verify_packages)
editors-check: wanted = $(editor_packages)
editors-test: wanted = $(editor_packages) chromium libkrb5-dev emscripten
wasm wasm-test: wanted = $(test_packages) emscripten
demo install build/release/cli/quor-gjf: wanted = $(packages)
missing = $(shell for p in $(wanted); do dpkg -s $$p >/dev/null 2>&1 || printf '%s ' $$p; done)
as_root = $(if $(filter 0,$(shell id -u)),,sudo)
prefix ?= /usr/local
# Debian's own: its NumPy and pybind11 are not there for others.
python ?= /usr/bin/python3
run_tidy = xargs -P 2 -n 1 clang-tidy-14 --quiet --extra-arg=-Wno-unknown-warning-option --extra-arg=-Wreserved-identifier
compile_tests = g++ -std=c++20 -fvisibility=hidden -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror -Wno-restrict -Winvalid-pch \
    -Isrc -Isrc/input/backends/gaussian '-DQUOR_GJF_SOURCE_DIR=""' '-DQUOR_GJF_BUILD_DIR=""'

.DEFAULT_GOAL := setup
.PHONY: setup demo test verify asan power-cuts python python-bench editors-check editors-test wasm wasm-test tsan coverage bench bench-build bench-peers bench-check bench-growth bench-report fuzz fuzz-long fuzz-repeated tidy cppcheck install clean

# How long each fuzzer runs, and which run (all, unless named).
fuzz_length ?= --seconds 60
fuzzers ?=

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

# What `make test` leaves out, in its short form: the same tests under the address and undefined-behaviour sanitizers, static analysis, what
# has threads under the thread sanitizer, coverage, fuzzing with the same inputs each time: what others find is for who looks for it.
verify: setup
	.ci/run asan cppcheck tidy tsan coverage fuzz-repeated editors-check

asan: setup
	cmake --preset asan && cmake --build --preset asan && ctest --preset asan

# What the editors' files colour, and the language server in Neovim and Emacs. The grammar of VS Code is looked at where npm is there.
editors-check: setup
	cmake --preset dev && cmake --build --preset dev --target quor-gjf
	-command -v npm >/dev/null && npm install --prefix build/editors/grammar --no-save --ignore-scripts --no-audit --no-fund \
	    vscode-textmate@9.3.2 vscode-oniguruma@2.0.1
	QUOR_GJF_NODE_MODULES=$(CURDIR)/build/editors/grammar/node_modules ctest --preset dev -R '^editor_'

# The table of features and clients in docs/editors.md, VS Code's workbench among them: code-server and the packed extension, in Chromium.
# Needs Node.js 20 with its headers, and npm. Takes 2 to 6 minutes; picture=docs/vscode.png draws the workbench anew.
editors-test: setup wasm
	cmake --preset dev && cmake --build --preset dev --target quor-gjf
	tests/editors/install_workbench.sh build/editors
	QUOR_GJF_PICTURE=$(picture) QUOR_G16_ROUTE_SCHEMA_YAML=$(CURDIR)/resources/schemas/input/gaussian_route.yaml \
	    python3 tests/editors/run.py $(CURDIR)/build/dev/cli/quor-gjf . build/editors/work

# The library as WebAssembly, for Node.js and browsers: web/dist, an npm package. The vocabulary's image is written by a native build.
# Node.js 20 and npm are not looked for among Debian's packages: they may come from elsewhere. Takes 5 minutes of a processor.
wasm: setup
	cmake --preset dev && cmake --build --preset dev --target vocabulary_image
	cd web && cmake --preset wasm && cmake --build --preset wasm && npm ci && npm run build && cp ../build/wasm/quor_gjf.wasm dist/

# The whole tool as WebAssembly beside the native one, twelve commands over all files; the messages of the language server against the module; its
# worker; sizes. Takes 3 minutes more.
wasm-test: wasm
	cmake --build --preset dev --target quor-gjf
	cd web && cmake --build --preset wasm --target tool
	python3 tests/lsp/run_messages.py node web/test/lsp.mjs
	python3 tests/lsp/equal_findings_test.py build/dev/cli/quor-gjf . build/wasm/equal node web/test/lsp.mjs
	node --test web/test/module.test.mjs
	python3 web/test/compare_tool.py build/dev/cli/quor-gjf build/wasm/quor-gjf.cjs .

# Cuts the power 200 times while files are saved; the tests do it 25 times. Needs e2fsprogs and leave to mount.
power-cuts: setup
	cmake --preset dev && cmake --build --preset dev --target quor-gjf slow_flush
	QUOR_G16_ROUTE_SCHEMA_YAML=$(CURDIR)/resources/schemas/input/gaussian_route.yaml \
	    python3 tests/cli/power_cuts_test.py build/dev/cli/quor-gjf build/dev/tests/cli/libslow_flush.so build/dev/power_cuts 200

# The wheel of the Python package: build/python/dist/quor_gjf-VERSION-....whl
python: setup
	$(python) -m pip wheel --quiet --no-index --no-deps --wheel-dir build/python/dist ./python
	@ls build/python/dist/*.whl

# Compares reading times with ASE, and with pymatgen when it is there. Installs the wheel into an environment of its own.
python-bench: python
	$(python) -m venv --system-site-packages build/python/bench
	build/python/bench/bin/python -m pip install --quiet --no-index --force-reinstall --no-deps build/python/dist/*.whl
	build/python/bench/bin/python python/benchmarks/compare_readers.py

# What has threads in it, the tool with its own among it.
tsan: setup
	cmake --preset tsan && cmake --build --preset tsan && ctest --preset tsan

# Needs gcovr. Branches that an exception alone would take are left out; docs/promises.md says what stays uncovered. Counting itself
# needs code at load time, so the test that there is none is left out, bounds of time say nothing here, and what is killed tells nothing.
coverage: setup
	cmake --preset coverage && cmake --build --preset coverage && ctest --preset coverage
	gcovr -j 2 --root . --object-directory build/coverage --filter src/ --exclude-throw-branches --exclude-unreachable-branches \
	    --fail-under-line 95 --fail-under-branch 85 --txt build/coverage/coverage.txt --print-summary build/coverage

# Needs libbenchmark-dev, as all that follows. bench_options="--benchmark_filter=read" for some of the benchmarks.
bench: bench-build
	build/bench/benchmarks/library_benchmark $(bench_options)

bench-build: setup
	cmake --preset bench && cmake --build --preset bench

# Reading, beside the current releases of ASE, pymatgen, iodata and cclib, which come from PyPI into an environment of their own, and Debian's
# Open Babel; what cannot be had is left out, and said. picture=docs/readers.svg draws how many files each reads right.
bench-peers: wanted = $(test_packages) libbenchmark-dev python3-openbabel
bench-peers: bench-build
	$(python) -m venv --system-site-packages build/bench/peers
	-build/bench/peers/bin/python -m pip install --quiet --upgrade ase pymatgen qc-iodata cclib
	build/bench/peers/bin/python benchmarks/peers/compare_peers.py build/bench $(if $(picture),--picture $(picture))

# Counts of instructions against benchmarks/results/instructions.json, which renew=1 writes anew. Needs valgrind.
bench-check: bench-build
	$(python) benchmarks/instructions.py build/bench $(if $(renew),--renew)

# How each operation of the editor grows with the number of atoms. Needs valgrind.
bench-growth: bench-build
	$(python) benchmarks/instructions.py build/bench --growth

# Every target of docs/performance.md: wanted, measured, met or not. record="what changed" keeps the figures; rules=1 prints the costs of
# the checks instead, which needs valgrind; starting=1 the rows of starting and of the Python package alone.
bench-report: bench-build
	$(python) benchmarks/report.py build/bench $(if $(record),--record "$(record)") $(if $(rules),--rules) $(if $(starting),--starting) $(if $(answering),--answering)

# Needs clang-14 and libclang-rt-14-dev.
fuzz: setup
	cmake --preset fuzz && cmake --build --preset fuzz
	python3 fuzz/run_fuzzers.py build/fuzz $(fuzz_length) $(fuzzers)

fuzz-long:
	$(MAKE) fuzz fuzz_length="--seconds 7200"

fuzz-repeated:
	$(MAKE) fuzz fuzz_length="--inputs 600"

# Needs clang-format-14 and clang-tidy-14. Most checks look at ten sources at once, as the joined build has them, in a seventh of the time that
# each alone would take. The analyzer follows paths of the file it is given alone, so it gets one source after another, what was changed last
# first; of the library alone: in the tool and the package it would follow those of CLI11, JSON and pybind11. These, and the tests, are
# compiled alone, each with all that it includes; GoogleTest is compiled once for them.
tidy:
	git ls-files '*.cpp' '*.hpp' '*.h' | xargs clang-format-14 --dry-run --Werror
	cmake --preset tidy && cmake --preset tidy_joined
	find build/tidy_joined/src build/tidy_joined/cli build/tidy_joined/python -name 'unity_*.cxx' | sort | \
	    $(run_tidy) -p build/tidy_joined --checks='-clang-analyzer-*,-bugprone-suspicious-include'
	ls -t $$(git ls-files 'src/*.cpp') | $(run_tidy) -p build/tidy --checks='-*,clang-analyzer-*,-clang-analyzer-optin.performance.Padding'
	ls -t $$(git ls-files 'cli/*.cpp' 'python/src/*.cpp') | $(run_tidy) -p build/tidy --checks='-*,modernize-use-nullptr'
	echo '#include <gtest/gtest.h>' > build/tidy/tests.hpp && $(compile_tests) -x c++-header build/tidy/tests.hpp
	ls -t $$(git ls-files 'tests/*_test.cpp') | xargs -P 2 -n 8 $(compile_tests) -fsyntax-only -include build/tidy/tests.hpp
	ls -t $$(git ls-files 'tests/*.cpp' ':!tests/*_test.cpp') | xargs -P 2 -n 8 $(compile_tests) -fsyntax-only

# Needs cppcheck. Style is left to clang-tidy.
cppcheck:
	cppcheck -j 2 --enable=warning,performance,portability --std=c++20 --language=c++ --quiet --error-exitcode=1 \
	    -UQUOR_GJF_CARRIED_RESOURCES -Isrc -Isrc/input/backends/gaussian src cli

install: build/release/cli/quor-gjf
	cmake --install build/release --prefix $(prefix)

clean:
	rm -rf build
