# The everyday commands. Each one installs what it needs first, when something is missing, and builds what it runs.
.DEFAULT_GOAL := all

ifeq ($(shell uname -s),Darwin)
PRESET := macos
# Homebrew keeps these out of the way of the system's own.
export CMAKE_PREFIX_PATH := $(shell brew --prefix icu4c 2>/dev/null):$(shell brew --prefix qt 2>/dev/null)
else
PRESET := release
endif
BUILD := build/$(PRESET)
INSTALL := tools/install-dependencies.sh
SOURCES = $(shell git ls-files --cached --others --exclude-standard -- '*.h' '*.cpp' '*.mm')

# The day of the newest release: what is packed is dated by it, so that the same sources make the same package.
RELEASE_DAY = sed -n 's/^\#\# [0-9.]* (\(.*\))$$/\1/p' CHANGELOG.md | head -n 1

.PHONY: all run test package dist check-package test-desktops sanitize check-macos check-macos-whole check-macos-faults fuzz bench bench-document bench-engine bench-pass bench-latency
.PHONY: check-model check-instructions record-instructions release-check format check-format tidy clean

## Builds everything.
all:
	@$(INSTALL) build
	@cmake --preset $(PRESET)
	@cmake --build --preset $(PRESET)

## Starts Tilora on this desktop; without one, shows it on a virtual desktop and checks what it does.
run:
	@$(INSTALL) build
	@cmake --preset $(PRESET)
	@cmake --build --preset $(PRESET) --target everyday
	@tools/run.sh $(BUILD)/bin

## Every test that a change has to pass.
test:
	@$(INSTALL) build test
	@cmake --preset $(PRESET)
	@cmake --build --preset $(PRESET)
	@ctest --preset $(PRESET)

## What to hand out: the Debian package for this distribution, the disk image on macOS. PACKAGE_OPTIONS goes to CMake.
package:
ifeq ($(PRESET),macos)
	@$(INSTALL) build
	@cmake --preset macos $(PACKAGE_OPTIONS)
	@cmake --build --preset macos --target everyday
	@tools/package-macos.sh $(BUILD)
else
	@$(INSTALL) build package
	@cmake --preset package $(PACKAGE_OPTIONS)
	@cmake --build --preset package
	@SOURCE_DATE_EPOCH=$$($(RELEASE_DAY) | date --utc --file=- +%s) cpack --config build/package/CPackConfig.cmake -B build/package
endif

## The source archive of the last commit, in out/.
dist:
	@tools/source-archive.sh out

## Builds the Debian package in bare roots of its distributions, checks it, and installs, starts and removes it there; root only.
check-package:
	@$(INSTALL) check-package
	@tests/package/check.sh build/package-check $(SUITES)

## The desktop suite on all nine window managers.
test-desktops:
	@$(INSTALL) build test desktops
	@cmake --preset release
	@cmake --build --preset release
	@ctest --preset desktops

## Storms over the real program on all window managers, CHAOS_SECONDS long. Prints its seed; CHAOS_SEED=N draws the same again.
.PHONY: chaos
CHAOS_SECONDS ?= 600
chaos:
	@$(INSTALL) build test desktops
	@cmake --preset release
	@cmake --build --preset release --target tilora-chaos
	@$(BUILD)/bin/tilora-chaos --seconds $(CHAOS_SECONDS) $(if $(CHAOS_SEED),--seed $(CHAOS_SEED))

## The same over the sanitizer build: ends within CHAOS_SECONDS and two minutes more, or fails. What other programs did wrong is in
## build/sanitize/chaos-others.log, and is shown when it fails.
.PHONY: chaos-sanitized
chaos-sanitized:
	@$(INSTALL) build test desktops
	@cmake --preset sanitize
	@cmake --build --preset sanitize --target tilora-chaos
	@others=build/sanitize/chaos-others.log; \
	timeout --foreground $$(($(CHAOS_SECONDS) + 120)) build/sanitize/bin/tilora-chaos --seconds $(CHAOS_SECONDS) $(if $(CHAOS_SEED),--seed $(CHAOS_SEED)) 2> $$others || \
	{ status=$$?; echo "the error output, with what other programs did wrong:"; cat $$others; echo "the storms ended with status $$status"; exit $$status; }

## Makes each call of the program that can fail do so once; takes half an hour.
.PHONY: faults
faults:
	@$(INSTALL) build test
	@cmake --preset release
	@cmake --build --preset release --target tilora-faults
	@for sweep in calls kinds; do $(BUILD)/bin/tilora-faults $$sweep || exit 1; done
	@failed=; for sweep in errors cuts delays; do \
	  pids=; for first in 1 2 3 4; do $(BUILD)/bin/tilora-faults $$sweep 4 $$first & pids="$$pids $$!"; done; \
	  for pid in $$pids; do wait $$pid || failed=$$sweep; done; \
	done; [ -z "$$failed" ]

## The tests under the address and undefined-behaviour sanitizers.
sanitize:
	@$(INSTALL) build test
	@cmake --preset sanitize
	@cmake --build --preset sanitize
	@ctest --preset sanitize

## The macOS desktop without a Mac: its tests over fake frameworks, then both processors' objects, the static analyser and a link.
check-macos:
	@$(INSTALL) build macos-checks
	@cmake --preset release
	@cmake --build --preset release --target macos_checks
	@ctest --preset release -L macos --no-tests=error
	@tests/macos/cross/check.sh $(BUILD)/macos-objects

## Configures all of Tilora as for macOS, and has clang read every C++ source of that with the standard library of macOS.
check-macos-whole:
	@$(INSTALL) build test macos-checks
	@tests/macos/cross/whole.py build/macos-whole

## Plants faults in a copy of the macOS desktop's sources, one after the other, and expects a check to find each; takes a while.
check-macos-faults:
	@$(INSTALL) build macos-checks
	@tests/macos/faults/run.sh build/macos-faults

## Searches for inputs that break a decoder, each target for FUZZ_SECONDS. TARGETS="feed script": only these.
FUZZ_SECONDS ?= 45
fuzz:
	@$(INSTALL) build check
	@cmake --preset fuzz
	@cmake --build --preset fuzz --target fuzzers
	@tests/fuzz/run.sh build/fuzz $(FUZZ_SECONDS) $(TARGETS)

## Runs the engine against the plain model of it on very many random desktops.
MODEL_DESKTOPS ?= 500000
check-model:
	@$(INSTALL) build test
	@cmake --preset $(PRESET)
	@cmake --build --preset $(PRESET) --target model_test
	@TILORA_MODEL_DESKTOPS=$(MODEL_DESKTOPS) $(BUILD)/tests/model/model_test

## Tilora side by side with other programs: keys, processor time, memory, start. Writes docs/comparison.md with its data and plots; takes
## an hour and a quarter, on a machine that does nothing else. BENCH_OPTIONS="--presses 4 --idle 10 --starts 1 --windows 4,100" makes it short.
BENCH_DATA ?= docs/data/comparison.csv
BENCH_OPTIONS ?=
bench:
	@$(INSTALL) build bench
	@cmake --preset bench
	@cmake --build --preset bench --target tilora-comparison tilora-figures
	@build/bench/bin/tilora-comparison --data $(BENCH_DATA) $(BENCH_OPTIONS) || echo "Not everything could be measured; the document says what."
	@build/bench/bin/tilora-figures $(BENCH_DATA) docs/comparison.md docs/pictures/comparison

## The document and the plots of "make bench", made again of its data.
bench-document:
	@$(INSTALL) build bench
	@cmake --preset bench
	@cmake --build --preset bench --target tilora-figures
	@build/bench/bin/tilora-figures $(BENCH_DATA) docs/comparison.md docs/pictures/comparison

## The engine, Tilora on a desktop left alone, and its windows.
bench-engine:
	@$(INSTALL) build bench
	@cmake --preset bench
	@cmake --build --preset bench
	@for program in build/bench/bench/*_bench; do echo "$$program"; "$$program" || exit 1; done

## What a pass costs for each window: its time, then its instructions under callgrind.
bench-pass:
	@$(INSTALL) build bench
	@cmake --preset bench
	@cmake --build --preset bench --target pass_bench pass_instructions
	@build/bench/bench/pass_bench
	@bench/instructions.sh build/bench

## Fails when the instructions of a pass have risen by more than 5 % above bench/instructions.txt. With another compiler than the record's
## nothing is checked, and that is no success either: status 77 of bench/instructions.sh.
check-instructions:
	@$(INSTALL) build bench
	@cmake --preset bench
	@cmake --build --preset bench --target pass_instructions
	@bench/instructions.sh build/bench --check

## Writes the instructions of a pass to bench/instructions.txt.
record-instructions:
	@$(INSTALL) build bench
	@cmake --preset bench
	@cmake --build --preset bench --target pass_instructions
	@bench/instructions.sh build/bench --record

## Only how long a key press takes to show, with four windows, in a few minutes. The document goes to out/.
bench-latency:
	@$(INSTALL) build bench
	@cmake --preset bench
	@cmake --build --preset bench --target tilora-comparison tilora-figures
	@build/bench/bin/tilora-comparison --data out/latency.csv --part latency --windows 4 $(BENCH_OPTIONS)
	@build/bench/bin/tilora-figures out/latency.csv out/latency.md out/latency

## What a release has to pass besides .ci/run, since it takes hours or root's rights.
release-check:
	@$(MAKE) test-desktops
	@$(MAKE) check-macos-whole
	@$(MAKE) check-macos-faults
	@$(MAKE) fuzz FUZZ_SECONDS=$(or $(RELEASE_FUZZ_SECONDS),3600)
	@$(MAKE) check-instructions
	@$(MAKE) check-model
	@$(MAKE) check-package
	@$(MAKE) faults
	@$(MAKE) chaos CHAOS_SECONDS=$(or $(RELEASE_CHAOS_SECONDS),3600)

## Formats every source file in place.
format:
	@$(INSTALL) check
	@clang-format -i $(SOURCES)

## Says which source files are not formatted.
check-format:
	@$(INSTALL) check
	@clang-format --dry-run --Werror $(SOURCES)

## The static checks of .clang-tidy on every source file.
tidy:
	@$(INSTALL) build check
	@cmake --preset tidy
	@tools/tidy.sh build/tidy

clean:
	@rm -rf build out
