# What the scripts share. Sourced, not run; `root` is the folder of the repository.
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"

build_packages=(g++ cmake ninja-build libpugixml-dev libutfcpp-dev libfontconfig-dev
    libcli11-dev nlohmann-json3-dev)
test_packages=(libgtest-dev pkg-config)
bench_packages=(libbenchmark-dev)
fuzz_packages=(clang libclang-rt-dev)

# A heading, in bold on a terminal.
say() {
    if [[ -t 1 && -z "${NO_COLOR:-}" ]]; then printf '\033[1m%s\033[0m\n' "$*"; else printf '%s\n' "$*"; fi
}

fail() {
    echo "$(basename "$0"): $*" >&2
    exit 1
}

as_root() {
    if [[ $(id -u) == 0 ]]; then "$@"; else sudo "$@"; fi
}

# Installs those of the packages that are missing; without any it asks for nothing.
install_packages() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed || missing+=("$package")
    done
    [[ ${#missing[@]} == 0 ]] && return
    say "== installing ${missing[*]}"
    [[ $(id -u) == 0 ]] || command -v sudo >/dev/null || fail "needs root or sudo to install ${missing[*]}"
    as_root apt-get update -qq
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# Configures a preset: configure PRESET [-DNAME=VALUE...]
configure() {
    local log
    if ! log="$(cd "$root" && cmake --preset "$@" 2>&1)"; then
        echo "$log" >&2
        fail "the preset $1 cannot be configured"
    fi
}

# Builds targets of a preset, all of them if none is named: build PRESET [TARGET...]
build() {
    local preset="$1" targets=()
    shift
    [[ $# == 0 ]] || targets=(--target "$@")
    cmake --build "$root/build/$preset" "${targets[@]}"
}
