# Shared by the scripts; sourced, not run.
set -euo pipefail

top=$(cd "$(dirname "${BASH_SOURCE[1]}")/.." && pwd)
cd "$top"

say() { printf '\n== %s\n' "$*"; }
note() { printf '   %s\n' "$*"; }
fail() {
    printf '\n** %s\n' "$*" >&2
    exit 1
}

# How many compilers run at once: all cores, unless BUILD_JOBS says otherwise.
jobs=${BUILD_JOBS:-$(nproc)}
