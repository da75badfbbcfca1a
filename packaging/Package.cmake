# The Debian package, by CPack. The shared libraries that it needs are found from the programs themselves; icons, types and
# the menu are brought up to date by the triggers of those packages, so it has no script that runs at an installation.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME benthor)
set(CPACK_PACKAGE_CONTACT "Benthor maintainers <maintainers@benthor.example>")
set(CPACK_PACKAGE_HOMEPAGE_URL https://benthor.example/)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
# Whatever the umask of whoever packs.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# Numbers stand in columns of this font where the desktop's own has figures of unequal width.
set(CPACK_DEBIAN_PACKAGE_DEPENDS fonts-dejavu-core)
# Mail, documents in other programs, screens without X.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"dive log and setup for KD rebreather computers
Benthor is the desktop companion of the KD family of rebreather dive
computers. It fetches the dives that a computer has logged, keeps them for
years, shows each one on a chart with all that was recorded at every sample,
and exports them in open formats.

It also edits the gases and settings that the device dives with, and
reprograms its firmware.

benthorctl does the work of a logbook from a shell; kdsim is a device in
software, to try all of it with.")

include(CPack)
