# The two commands: make run, make test. Everything else is CMake's (see CMakePresets.json).

.PHONY: run test release lint format pictures clean

# Shows the main job, a dialog on the screen; make run ARGS="eval '…'" runs the workbench with
# arguments of your own.
run: release
	@scripts/run.sh $(ARGS)

test:
	@scripts/set-up.sh test
	@scripts/test.sh

release:
	@scripts/set-up.sh run
	@scripts/build.sh release tarvo tarvo-desktop Quenlix bundle_resources

lint:
	@scripts/set-up.sh test
	@scripts/build.sh release
	@scripts/lint.sh build/release

format:
	@git ls-files '*.h' '*.cpp' | xargs clang-format -i

# The pictures of docs/, drawn by the workbench.
pictures: release
	@docs/pictures/make-pictures.sh build/release

clean:
	rm -rf build
