# What packaging/test-inside is made of; sourced, not run. It has $root, $place, $pictures and $home.

# What a system finds under /proc, /sys and /dev, for this process and what it starts. No device of the machine is among it.
mountSystem() {
    mount -t proc proc "$root/proc"
    mount -t tmpfs -o mode=755 tmpfs "$root/dev"
    local device
    for device in 'null 1 3' 'zero 1 5' 'full 1 7' 'random 1 8' 'urandom 1 9' 'tty 5 0'; do
        set -- $device
        mknod -m 666 "$root/dev/$1" c "$2" "$3"
    done
    mkdir "$root/dev/pts" "$root/dev/shm"
    mount -t devpts -o newinstance,ptmxmode=0666,mode=620 devpts "$root/dev/pts"
    ln -s pts/ptmx "$root/dev/ptmx"
    ln -s /proc/self/fd "$root/dev/fd"
    mount -t tmpfs -o mode=1777 tmpfs "$root/dev/shm"
    mount --bind "$place/archives" "$root/var/cache/apt/archives"
    # Names are found as on this machine.
    cp -L /etc/resolv.conf /etc/hosts "$root/etc/"
}

inRoot() {
    chroot "$root" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"
}

aptInRoot() {
    inRoot apt-get -y -qq -o Dpkg::Use-Pty=0 --no-install-recommends "$@" >"$place/apt.log" 2>&1 || {
        tail -n 30 "$place/apt.log" >&2
        fail "apt-get $1 failed in the clean system."
    }
}

asDiver() {
    chroot --userspec=1000:1000 --groups= "$root" /usr/bin/env -i --chdir="$home" PATH=/usr/bin:/bin HOME="$home" USER=diver \
        LC_ALL=C.UTF-8 XDG_RUNTIME_DIR="/run/user/1000" DISPLAY="${DISPLAY:-}" "$@"
}

# --- what is there

# Everything but what the package system itself and others' caches note of any installation.
listFiles() {
    listTree . \( -path ./proc -o -path ./sys -o -path ./dev -o -path ".$home" -o -path ./run/user -o -path ./tmp/.X11-unix \
        -o -path ./var/lib/dpkg -o -path ./var/lib/apt -o -path ./var/cache/apt -o -path ./var/cache/debconf \
        -o -path ./var/log \)
}

listHome() {
    listTree ".$home" -false
}

# Kind, rights, owner and path of each, with where a link leads; then a sum over what each file holds. Behind the folder what
# to pass over.
listTree() {
    local start=$1
    shift
    (
        cd "$root"
        find "$start" "$@" -prune -o -printf '%y %m %U:%G %p %l\n' | LC_ALL=C sort
        find "$start" "$@" -prune -o -type f -print0 | LC_ALL=C sort -z | xargs -0r sha256sum
    )
}

# --- the virtual display

startDisplay() {
    mkdir -p "$root/run/user/1000" "$root/tmp/.X11-unix" /tmp/.X11-unix
    chown 1000:1000 "$root/run/user/1000"
    chmod 700 "$root/run/user/1000"
    local number=$place/display
    : >"$number"
    Xvfb -displayfd 3 -screen 0 1366x768x24 -nolisten tcp -noreset -ac 3>"$number" 2>"$place/xvfb.log" &
    waitFor "a virtual display" test -s "$number"
    export DISPLAY=:$(cat "$number")
    mount --bind /tmp/.X11-unix "$root/tmp/.X11-unix"
}

# waitFor "what" command...: until it succeeds; half a minute at most.
waitFor() {
    local what=$1 turn
    shift
    for turn in $(seq 300); do
        "$@" && return
        sleep 0.1
    done
    scrot -o "$pictures/failed.png" 2>/dev/null || true
    fail "Waited in vain for $what. $(cat "$pictures/.benthor.log" 2>/dev/null)"
}

windows() { xdotool search --onlyvisible --name "$1" 2>/dev/null; }
isThere() { [ -n "$(windows "$1")" ]; }
# The main screen has the same name as its boxes.
isBoxUp() { [ "$(windows '^Benthor$' | wc -l)" -eq 2 ]; }
isNoBoxUp() { [ "$(windows '^Benthor$' | wc -l)" -eq 1 ]; }
hasEnded() { ! kill -0 "$1" 2>/dev/null; }

# The window of that title that came last gets the keyboard.
focusNewest() { xdotool windowfocus --sync "$(windows "$1" | sort -n | tail -n 1)"; }

window() {
    waitFor "the window $1" isThere "$1"
    focusNewest "$1"
}
press() { xdotool key --clearmodifiers "$1"; }
picture() { scrot -o "$pictures/$1.png"; }

# --- the rule for serial adapters

# A system's device tree of our own making, with one adapter and its port; udev tells what the rules make of them.
checkAdapters() {
    local tree=$root/sys usb=devices/pci0/usb1/1-1
    mount -t tmpfs -o mode=755 tmpfs "$tree"
    # Where udev notes what it has said.
    mount -t tmpfs -o mode=755 tmpfs "$root/run"
    mkdir -p "$tree/$usb/1-1:1.0/ttyUSB0/tty/ttyUSB0" "$tree"/bus/{usb,usb-serial} "$tree/class/tty"
    adapterOf 0403 6001 "$tree/$usb"
    expectOf "$usb" ID_MM_DEVICE_IGNORE=1
    expectOf "$usb/1-1:1.0/ttyUSB0/tty/ttyUSB0" ID_MM_DEVICE_IGNORE=1 ID_MM_PORT_IGNORE=1 CURRENT_TAGS=.*:uaccess:
    adapterOf 1d6b 0104 "$tree/$usb"
    if udevSays "$usb/1-1:1.0/ttyUSB0/tty/ttyUSB0" | grep -E '^CURRENT_TAGS=.*:uaccess:|^ID_MM_'; then
        fail "The rule takes any device for a serial adapter."
    fi
    umount "$tree" "$root/run"
    note "udev: the seat's user may open an adapter, and no search for modems looks at it"
}

adapterOf() {
    local device=$3 port=$3/1-1:1.0/ttyUSB0
    printf '%s\n' "$1" >"$device/idVendor"
    printf '%s\n' "$2" >"$device/idProduct"
    printf 'MAJOR=189\nMINOR=1\nDEVNAME=bus/usb/001/002\nDEVTYPE=usb_device\n' >"$device/uevent"
    printf 'DEVTYPE=usb_interface\n' >"$device/1-1:1.0/uevent"
    : >"$port/uevent"
    printf 'MAJOR=188\nMINOR=0\nDEVNAME=ttyUSB0\n' >"$port/tty/ttyUSB0/uevent"
    ln -sfn /sys/bus/usb "$device/subsystem"
    ln -sfn /sys/bus/usb "$device/1-1:1.0/subsystem"
    ln -sfn /sys/bus/usb-serial "$port/subsystem"
    ln -sfn /sys/class/tty "$port/tty/ttyUSB0/subsystem"
}

udevSays() { inRoot env SYSTEMD_DEVICE_VERIFY_SYSFS=0 udevadm test --action=add "/sys/$1" 2>&1; }

expectOf() {
    local said wanted
    said=$(udevSays "$1")
    shift
    if grep -E '70-benthor-serial\.rules:[0-9]+.*([Ii]nvalid|[Uu]nknown|[Ff]ail|[Ii]gnor)' <<<"$said"; then
        fail "udev does not understand the rule."
    fi
    for wanted in "$@"; do
        grep -qE "^$wanted" <<<"$said" || fail "udev does not say $wanted: $said"
    done
}
