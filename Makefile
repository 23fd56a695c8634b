# The commands of this tree. The build itself is CMake's: docs/building.md.
SHELL := /bin/bash
SECONDS_EACH := $(or $(SECONDS),60)
bin := build/win64-release/bin

.PHONY: help run test build format lint fuzz soak bench coverage gallery-shots clean setup

help: ## Lists these commands
	@sed -n 's/^\([a-z-]*\):.*## \(.*\)/  make \1\t\2/p' $(MAKEFILE_LIST) | expand -t 24

run: ## Installs what is missing, builds, shows the gallery (renders its pages where there is no display)
	@tools/run_gallery.sh $(ARGS)

test: ## Installs what is missing, builds, runs every test
	@tools/test.sh $(PARTS)

setup: ## Installs what building and testing need
	@tools/setup.sh build test

build: ## Builds the products for 64-bit Windows
	@tools/setup.sh build
	@tools/build.sh win64-release

format: ## Brings our C++ sources into the house's format
	@tools/setup.sh lint
	@tools/format.sh

lint: ## Checks format, layers and clang-tidy's findings
	@tools/setup.sh build lint
	@tools/lint.sh

fuzz: ## Runs every fuzzer for SECONDS=60 each
	@tools/setup.sh build test
	@[ -x tools/fuzz.sh ] || { echo "There are no fuzzers yet: tools/fuzz.sh is missing." >&2; exit 1; }
	@tools/fuzz.sh $(SECONDS_EACH)

soak: ## A million random steps over all controls in the checked build; STEPS= and SEED= choose others
	@tools/soak.sh $(if $(STEPS),--steps $(STEPS)) $(if $(SEED),--seed $(SEED)) $(ARGS)

bench: ## Benchmarks, beside the platform's own controls
	@tools/run_program.sh bench $(ARGS)

coverage: ## Which lines the native and the Windows tests reach
	@tools/setup.sh build test coverage
	@tools/coverage.sh $(PARTS)

gallery-shots: ## Renders the gallery's pages into build/gallery-shots
	@tools/run_gallery.sh --shots build/gallery-shots

clean: ## Removes what the build made; fetched sources and Wine's prefix stay
	@find build -mindepth 1 -maxdepth 1 ! -name downloads ! -name wine -exec rm -rf {} + 2>/dev/null || true
