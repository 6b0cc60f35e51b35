# The two commands: make run, make test. Everything else is CMake's (see CMakePresets.json).

.PHONY: run test release install package lint format pictures pages bench fuzz coverage clean

# Shows the main job, a dialog on the screen; make run ARGS="eval '…'" runs the workbench with
# arguments of your own.
run: release
	@scripts/run.sh $(ARGS)

test:
	@scripts/set-up.sh test
	@scripts/test.sh

release:
	@scripts/set-up.sh run
	@scripts/build.sh release tarvo tarvo-desktop tarvo-terminal Quenlix bundle_resources

# Into PREFIX, below DESTDIR if that is given.
PREFIX ?= /usr/local
install: release
	@DESTDIR="$(DESTDIR)" cmake --install build/release --prefix "$(PREFIX)"

# A Debian package: build/release/tarvo_VERSION_ARCHITECTURE.deb
package: release
	@cd build/release && cpack

# The rules for sources, of every one.
lint:
	@scripts/set-up.sh test
	@scripts/lint.sh

format:
	@git ls-files '*.h' '*.cpp' | xargs clang-format -i

# The pictures of docs/, drawn by the workbench.
pictures: release
	@docs/pictures/make-pictures.sh build/release
	@docs/pictures/make-text-pictures.sh build/release

# The pages of docs/ that the program's own tables make.
pages:
	@scripts/set-up.sh run
	@scripts/build.sh release calculations_page advice_page
	@build/release/calculations_page > docs/calculations.md
	@build/release/advice_page > docs/advice.md

# What a user waits for, next to its references: one table; make bench ARGS=--json.
bench:
	@scripts/set-up.sh bench
	@scripts/bench.sh $(ARGS)

# Line and branch coverage of the plug-in and its layers by the quick tests.
coverage:
	@scripts/set-up.sh test
	@scripts/coverage.sh

MINUTES ?= 10
fuzz:
	@scripts/set-up.sh fuzz
	@scripts/fuzz.sh $(MINUTES)

clean:
	rm -rf build
