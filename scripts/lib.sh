# Shared by scripts/run and scripts/test: quiet steps and idempotent set-up. Source it from bash;
# it moves to the root of the checkout, so the caller's directory does not matter.

set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
cd "$root"
mkdir -p build/logs

# A second clone of the same commit then finds what the first one compiled.
export CCACHE_BASEDIR=$root CCACHE_NOHASHDIR=1

testsPassed=0

# What building takes. GoogleTest and Google Benchmark are here because configuring looks for them.
buildPackages=(g++ cmake ninja-build ccache pkg-config libsqlite3-dev libcpp-httplib-dev
    nlohmann-json3-dev libpugixml-dev libsodium-dev libgtest-dev libgmock-dev libbenchmark-dev)

# What the Windows builds and their tests take besides. GoogleTest is built from its sources there,
# and the type library refers to the system's, which Wine brings along.
comPackages=(g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix mingw-w64-tools googletest
    wine wine64 libwine)

fail() {
    printf '%s\n' "scripts/$(basename "$0"): failed: $*" >&2
    exit 1
}

# One run of the scripts at a time in a checkout: two would build into the same folders.
takeTurn() {
    exec 9>build/.turn
    flock -n 9 && return
    echo "waiting for another run in this checkout to finish"
    flock 9
}

# step NAME COMMAND...: runs COMMAND with its output in build/logs/NAME.log and prints one line
# with the time it took. A failure shows the end of that log and ends the script.
step() {
    local name=$1 log="$root/build/logs/${1// /-}.log" begun=$EPOCHREALTIME status=0 seconds
    shift
    printf '%-26s' "$name"
    # Written out like this because a command before || would not stop at its first error.
    set +e
    ( set -e; exec 9>&-; "$@" ) >"$log" 2>&1 </dev/null
    status=$?
    set -e
    seconds=$(awk -v a="$begun" -v b="$EPOCHREALTIME" 'BEGIN { printf "%.1f s", b - a }')
    if ((status != 0)); then
        printf 'failed  %s\n\n' "$seconds"
        tail -n 200 "$log"
        printf '\n'
        fail "step \"$name\"; its whole output is in $log"
    fi
    printf 'ok  %8s' "$seconds"
}

# Ends the line that a step began.
endLine() { printf '%s\n' "${1:+  $1}"; }

quietStep() { step "$@"; endLine; }

# testStep NAME COMMAND...: a step that must run at least one test. Understands the closing lines
# of ctest and of node's test runner, and adds them to testsPassed.
testStep() {
    local log="$root/build/logs/${1// /-}.log" passed
    step "$@"
    passed=$(sed -nE -e 's/^.*tests passed, 0 tests failed out of ([0-9]+)$/\1/p' \
        -e 's/^(ℹ|#) pass ([0-9]+)$/\2/p' "$log" | awk '{ sum += $1 } END { print sum + 0 }')
    endLine "$passed tests"
    ((passed > 0)) || fail "step \"$1\" ran no test; its output is in $log"
    testsPassed=$((testsPassed + passed))
}

asRoot() {
    if ((EUID == 0)); then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        echo "Installing Debian packages takes root or sudo: $*"
        return 1
    fi
}

installPackages() {
    asRoot apt-get update
    asRoot env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends \
        -o DPkg::Lock::Timeout=300 "$@"
}

# needPackages PACKAGE...: installs those that are absent; does nothing when none is.
needPackages() {
    local package absent=()
    for package in "$@"; do
        [[ $(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) == installed ]] ||
            absent+=("$package")
    done
    ((${#absent[@]} == 0)) || quietStep "Debian packages" installPackages "${absent[@]}"
}

# Node may come from elsewhere than Debian; its packages are wanted only where the commands are not.
needNode() {
    local absent=()
    command -v node >/dev/null || absent+=(nodejs)
    command -v npm >/dev/null || absent+=(npm)
    ((${#absent[@]} == 0)) || quietStep "Node" installPackages "${absent[@]}"
    local version
    version=$(node -p 'process.versions.node')
    ((${version%%.*} >= 18)) || fail "node 18 or newer is needed; this is $version"
}

# needLibraries [--omit=dev]: installs the npm libraries unless node_modules already holds those of
# this lock file. A complete set serves where only the pages' own libraries are asked for.
needLibraries() {
    local wanted mark=node_modules/.installed-for
    wanted=$(cat package.json package-lock.json | sha256sum | cut -d ' ' -f 1)
    [[ -f $mark ]] && grep -qxF -e "$wanted" -e "$wanted${1:+ $1}" "$mark" && return
    quietStep "npm libraries" npm ci "$@"
    echo "$wanted${1:+ $1}" >"$mark"
}

# build PRESET [TARGET...]: configuring is repeated so that a new folder's CMakeLists.txt is seen.
build() {
    local preset=$1
    shift
    cmake --preset "$preset"
    cmake --build --preset "$preset" ${1:+--target "$@"}
}
