# The front door. Each target installs what is missing first (scripts/setup) and then calls the CMake presets.
.DEFAULT_GOAL := help
.PHONY: help setup build build-linux build-windows build-windows-x64 run run-linux test test-linux test-asan test-tsan test-windows coverage mutation soak proof fuzz fuzz-32 bench check clean

JOBS ?= $(shell nproc)
CASES ?= 100000000
# Of everything random in tests: SEED=NUMBER repeats a run.
SEED ?= $(shell od -An -N4 -tu4 /dev/urandom | tr -d ' ')
seed := $(SEED)
export MORDREV_SEED := $(seed)
PRESET ?= linux
product := mordRev ZelkBase Ferrocore mordhost waiter32 waiter64
# $(call built,PRESET,TARGETS,OPTIONS) configures and builds; without TARGETS all of them.
built = mkdir -p build && \
	{ cmake --preset $(1) $(3) > build/$(1).configure.log || { cat build/$(1).configure.log; exit 1; }; } && \
	cmake --build --preset $(1) -j $(JOBS) $(if $(2),--target $(2))
ctest = echo "MORDREV_SEED=$(seed)" && ctest --preset $(1) -j $(JOBS) --progress --no-tests=error
# RECORD=1 has a long run leave its record in docs/runs.
record = $(if $(RECORD),--record)

help: ## this list
	@awk -F ':.*## ' '/^[a-z0-9-]+:.*## /{printf "  make %-18s %s\n", $$1, $$2}' $(MAKEFILE_LIST)

setup: ## install what is missing: compilers, Wine, libraries
	@scripts/setup

build: build-linux build-windows build-windows-x64 ## build everything, for Linux and for Windows

build-linux: ## build everything for Linux
	@scripts/setup linux
	@$(call built,linux)

build-windows: ## build everything for 32-bit Windows, and what inspects processes for 64-bit Windows too
	@scripts/setup linux windows test
	@$(call built,windows-x86)
	@$(call built,windows-x64,inspectionTests)

build-windows-x64: ## build the library, its siblings and its tools for 64-bit Windows
	@scripts/setup linux windows test
	@$(call built,windows-x64,$(product) mordinspect)

run: ## replay the examples through the 32-bit mordRev.dll under Wine
	@scripts/setup linux windows
	@$(call built,windows-x86,$(product))
	@scripts/replayExamples windows-x86

run-linux: ## replay the examples through libmordRev.so
	@scripts/setup linux
	@$(call built,linux,$(product))
	@scripts/replayExamples linux

# Everything is installed first, so that the tests on Linux are compiled by clang at once.
test: setup check test-linux test-asan test-tsan test-windows ## run all tests: Linux, Linux with sanitizers, 32-bit Windows under Wine

test-linux: ## run the tests on Linux
	@scripts/setup linux test
	@$(call built,linux)
	@$(call ctest,linux)

test-asan: ## run the tests on Linux under AddressSanitizer and UndefinedBehaviorSanitizer
	@scripts/setup linux test
	@$(call built,linux-asan)
	@$(call ctest,linux-asan)

test-tsan: ## run the tests that use several threads on Linux under ThreadSanitizer
	@scripts/setup linux test
	@$(call built,linux-tsan,raceTests)
	@$(call ctest,linux-tsan) -L threads

test-windows: build-windows ## run the tests on Windows, under Wine: all on 32 bits, those of process inspection on 64 bits too
	@$(call ctest,windows-x86)
	@$(call ctest,windows-x64) -L inspection

coverage: ## count the branches that the tests take; fail below the required shares
	@scripts/setup linux coverage
	@$(call built,linux-coverage)
	@rm -rf build/linux-coverage/profiles
	@export LLVM_PROFILE_FILE=$(CURDIR)/build/linux-coverage/profiles/%4m.profraw; $(call ctest,linux-coverage)
	@tools/coverage build/linux-coverage

mutation: ## plant one change at a time into the library and run the tests (some hours)
	@scripts/setup linux mutation
	@tests/mutation/run.py

soak: ## compare the library with its model on very many random cases: CASES=100000000 PRESET=linux SEED=... (RECORD=1)
	@scripts/setup linux $(if $(filter windows%,$(PRESET)),windows)
	@$(call built,$(PRESET),modelSoak)
	@JOBS=$(JOBS) PROGRAM=build/$(PRESET)/tests/modelSoak$(if $(filter windows%,$(PRESET)),.exe) \
		tools/soak $(record) $(CASES) $(seed)

proof: ## compare the library with its model on every combination of a small scope: PRESET=linux (RECORD=1)
	@scripts/setup linux $(if $(filter windows%,$(PRESET)),windows)
	@$(call built,$(PRESET),modelProof)
	@JOBS=$(JOBS) tools/proof $(record) --preset $(PRESET)

# SECONDS for each target, RUNS instead of or beside them, TARGETS of all, FUZZ_JOBS processes for each.
fuzz fuzz-32: preset = linux-fuzz$(patsubst fuzz%,%,$@)
fuzz: ## run the fuzzers, one after the other (SECONDS=60 RUNS=0 TOTAL=0 TARGETS="allowList ..." FUZZ_JOBS=1 RECORD=1)
fuzz-32: ## the same in 32-bit processes
fuzz fuzz-32:
	@scripts/setup linux $@
	@$(call built,$(preset))
	@tools/fuzz --preset $(preset) --seconds $(or $(SECONDS),60) --runs $(or $(RUNS),0) --total $(or $(TOTAL),0) --jobs $(or $(FUZZ_JOBS),1) $(record) $(TARGETS)

bench: ## measure decisions and log records, on Linux and 32-bit Windows, and hold them to their limits
	@scripts/setup linux windows
	@$(call built,linux,bench,-DMORDREV_BENCH=ON)
	@$(call built,windows-x86,bench,-DMORDREV_BENCH=ON)
	@bench/run linux
	@bench/run windows-x86
	@tools/benchLimits linux windows-x86

check: ## check the structure of the sources: layers, names, sizes
	@tools/structure

clean: ## remove everything that was built
	rm -rf build
