# The Debian packages, one for each component of the installation; scripts/package builds them. They contain
# the shared libraries, for the prefix /usr; other layouts need an installation.
if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr" OR PARSER_MX_STATIC)
    return()
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL parser mxfileext database dev)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_NAME parser-mx)
set(CPACK_PACKAGE_CONTACT "kv38 device description maintainers <maintainers@example.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS ${CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS})
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)

# Dependencies on the system are read from the binaries; those between these packages are stated below.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
# The libraries provide the dependency information for a host's own package.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(same "(= ${PROJECT_VERSION})")
set(since "(>= ${PROJECT_VERSION})")

# The change log of the packages. Its date is fixed per version, so that equal sources give equal bytes.
set(changelog_date "Sat, 21 Nov 2026 16:15:41 +0000")
configure_file(cmake/changelog.in ${PROJECT_BINARY_DIR}/changelog @ONLY)
execute_process(COMMAND gzip -9n INPUT_FILE ${PROJECT_BINARY_DIR}/changelog
                OUTPUT_FILE ${PROJECT_BINARY_DIR}/changelog.gz COMMAND_ERROR_IS_FATAL ANY)

# Describes one package: component, Debian name, section, summary and the lines of the text below it.
macro(parser_mx_package component name section summary)
    string(TOUPPER ${component} upper)
    set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name})
    set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section})
    string(JOIN "\n" CPACK_DEBIAN_${upper}_DESCRIPTION "${summary}" ${ARGN})
    install(
        FILES ${PROJECT_SOURCE_DIR}/cmake/copyright ${PROJECT_BINARY_DIR}/changelog.gz
        DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${name}
        COMPONENT ${component})
endmacro()

parser_mx_package(
    parser libparser-mx3 libs "device-description parser of the kv38 module family"
    "Turns binary mx files, one per I/O module type, into devices with channels,"
    "parameters and properties, and computes the parameter image of a configured"
    "module.")
# A host with its own companion library or device database provides these names itself.
set(CPACK_DEBIAN_PARSER_PACKAGE_DEPENDS
    "libmxfileext1 ${since} | mxfileext-1, libdevice-database1 ${since} | device-database-1")

# When the libraries are installed or removed, a trigger renews the loader's cache. CPack would add scripts
# that do the same, against Debian's rules. It omits scripts whose names are given here; these files do not
# exist.
foreach(component PARSER MXFILEEXT DATABASE MXMODULE MXSTATION MXONLINE)
    set(CPACK_DEBIAN_${component}_PACKAGE_CONTROL_EXTRA
        ${PROJECT_SOURCE_DIR}/cmake/triggers ${PROJECT_BINARY_DIR}/none/postinst
        ${PROJECT_BINARY_DIR}/none/postrm)
endforeach()

parser_mx_package(
    mxfileext libmxfileext1 libs "coding of parameter values of kv38 modules"
    "The companion library of libparser-mx3: it reads, converts and sets the values"
    "in a parameter image.")
set(CPACK_DEBIAN_MXFILEEXT_PACKAGE_PROVIDES mxfileext-1)

parser_mx_package(
    database libdevice-database1 libs "device database of kv38 modules"
    "Stores one record for each module type that libparser-mx3 reads.")
set(CPACK_DEBIAN_DATABASE_PACKAGE_PROVIDES device-database-1)

set(module_libraries "")
if(PARSER_MX_BUILD_MODULE)
    list(APPEND CPACK_COMPONENTS_ALL mxmodule)
    parser_mx_package(
        mxmodule libmxmodule1 libs "kv38 modules as configured, for hosts"
        "Values by name into parameter images and back, Modbus registers, channel"
        "maps, checks of mx files, and the catalogue of modules.")
    string(CONCAT CPACK_DEBIAN_MXMODULE_PACKAGE_DEPENDS
        "libparser-mx3 ${same}, libmxfileext1 ${since} | mxfileext-1, libdevice-database1 ${same}")
    list(APPEND CPACK_COMPONENTS_ALL mxstation)
    parser_mx_package(
        mxstation libmxstation1 libs "kv38 modules in a row, for hosts"
        "Stations: one process image for all modules, with the address of every"
        "channel, the parameter image of every module and every gap.")
    set(CPACK_DEBIAN_MXSTATION_PACKAGE_DEPENDS "libmxmodule1 ${same}")
    list(APPEND CPACK_COMPONENTS_ALL mxonline)
    parser_mx_package(
        mxonline libmxonline1 libs "kv38 modules on their coupler over Modbus, for hosts"
        "Reads, compares and writes the parameters of a station over Modbus TCP or RTU,"
        "shows and sets live values by channel name, and simulates a coupler.")
    set(CPACK_DEBIAN_MXONLINE_PACKAGE_DEPENDS "libmxstation1 ${same}, libmxmodule1 ${same}")
    # Compiled for each Python when it is installed. Its libraries are of the same version: it declares their functions.
    list(APPEND CPACK_COMPONENTS_ALL python)
    parser_mx_package(
        python python3-mxmodule python "kv38 modules and stations, for Python 3"
        "Parameters by name into images and back, channels, stations, couplers over"
        "Modbus and the catalogue, with type hints.")
    set(CPACK_DEBIAN_PYTHON_PACKAGE_ARCHITECTURE all)
    set(CPACK_DEBIAN_PYTHON_PACKAGE_SHLIBDEPS OFF)
    string(CONCAT CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS
        "python3 (>= 3.9), libmxmodule1 ${same}, libmxstation1 ${same}, libmxonline1 ${same}")
    set(CPACK_DEBIAN_PYTHON_PACKAGE_SUGGESTS python3-pandas)
    set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA
        ${PROJECT_SOURCE_DIR}/cmake/python3-mxmodule/postinst
        ${PROJECT_SOURCE_DIR}/cmake/python3-mxmodule/prerm)
    string(CONCAT module_libraries
        ", libmxmodule1 ${same}, libmxstation1 ${same}, libmxonline1 ${same}")
endif()

# The PostgreSQL engine is a separate package: recommended, not required.
if(TARGET device-database-postgresql)
    list(APPEND CPACK_COMPONENTS_ALL postgresql)
    parser_mx_package(
        postgresql libdevice-database1-postgresql libs "device database of kv38 modules, PostgreSQL"
        "Lets libdevice-database1 keep its records in a PostgreSQL server.")
    set(CPACK_DEBIAN_POSTGRESQL_PACKAGE_DEPENDS "libdevice-database1 ${same}")
    set(CPACK_DEBIAN_DATABASE_PACKAGE_RECOMMENDS libdevice-database1-postgresql)
endif()

parser_mx_package(
    dev libparser-mx-dev libdevel "device-description parser of the kv38 module family, development"
    "Headers, CMake package, pkg-config files, documents and examples.")
string(CONCAT CPACK_DEBIAN_DEV_PACKAGE_DEPENDS
    "libparser-mx3 ${same}, libmxfileext1 ${same}, libdevice-database1 ${same}${module_libraries}, "
    "libpoco-dev (>= 1.11)")
set(CPACK_DEBIAN_DEV_PACKAGE_SHLIBDEPS OFF)

if(PARSER_MX_BUILD_TOOL)
    list(APPEND CPACK_COMPONENTS_ALL tool)
    parser_mx_package(
        tool mxtool utils "device descriptions of kv38 modules on the command line"
        "Shows what an mx file describes, configures a module and keeps a device"
        "database.")
    string(CONCAT CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS
        "libmxonline1 ${same}, libmxstation1 ${same}, libmxmodule1 ${same}, libparser-mx3 ${same}, libmxfileext1 ${since} | mxfileext-1, "
        "libdevice-database1 ${same}")
endif()

# The page is a separate package: suggested, not required.
if(TARGET mx-workbench)
    list(APPEND CPACK_COMPONENTS_ALL workbench)
    parser_mx_package(
        workbench mx-workbench utils "kv38 modules and stations on a page in the browser"
        "The page of `mxtool serve`, on which modules and stations are configured."
        "It needs no network.")
    set(CPACK_DEBIAN_WORKBENCH_PACKAGE_DEPENDS
        "mxtool ${same}, libmxonline1 ${same}, libmxstation1 ${same}, libmxmodule1 ${same}")
    set(CPACK_DEBIAN_TOOL_PACKAGE_SUGGESTS mx-workbench)
endif()

include(CPack)
