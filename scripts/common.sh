# What the scripts share; sourced by them. Progress goes to standard error.
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)

# ensure_configured PRESET [NAME:TYPE=VALUE...]: configures build/PRESET unless it already is, with these values.
ensure_configured() {
    local preset=$1 cache="$top/build/$1/CMakeCache.txt" setting settings=() stale=""
    shift
    [ -f "$top/build/$preset/build.ninja" ] || stale=yes
    for setting in "$@"; do
        settings+=("-D$setting")
        grep -qsxF -- "$setting" "$cache" || stale=yes
    done
    if [ -n "$stale" ] && ! (cd "$top" && cmake --preset "$preset" "${settings[@]}") >&2; then
        rm -f "$top/build/$preset/build.ninja" # so that the next call configures again
        return 1
    fi
}

# build PRESET TARGET [NAME:TYPE=VALUE...]: brings the target up to date; says nothing when it already is.
build() {
    mkdir -p "$top/build/$1"
    # Several scripts may run side by side on many files: one of them builds, the others wait for it.
    (
        flock 9
        ensure_configured "$1" "${@:3}" || exit
        cmake --build "$top/build/$1" --target "$2" 9>&- 2>&1 |
            sed -u -e '/Re-checking globbed directories/d' -e '/^ninja: no work to do/d' >&2
    ) 9>"$top/build/$1/.lock"
}

# use_module PRESET: sets `python` to the interpreter that the build was configured with, and puts the module on its path.
use_module() {
    local tag folder
    IFS=$'	' read -r tag python folder <"$top/build/$1/python/interpreters"
    export PYTHONPATH="$folder${PYTHONPATH:+:$PYTHONPATH}"
}

# find_python NAME: prints the path of an interpreter of that name that runs and whose headers are installed; fails
# when there is none. The system's comes first; a version manager's are found even where they are not the active ones.
find_python() {
    local manager candidate
    manager=$(pyenv root 2>/dev/null || echo "${PYENV_ROOT:-$HOME/.pyenv}")
    for candidate in "/usr/bin/$1" "$(command -v "$1" || true)" "$manager"/versions/*/bin/"$1"; do
        if [ -x "$candidate" ] && "$candidate" "$top/cmake/python_info.py" >/dev/null 2>&1; then
            "$candidate" -c 'import sys; print(sys.executable)'
            return 0
        fi
    done
    return 1
}
