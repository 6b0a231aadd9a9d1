# Writes Version.h anew when the version or the last commit's date has changed.
#   cmake -D SOURCE=<source folder> -D PROJECT_VERSION=<version> -D HEADER=<file> -P WriteVersionHeader.cmake
# Without a repository (in an unpacked archive) the date is that of the change log.

if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
    execute_process(COMMAND git -C ${SOURCE} log -1 --format=%ct
        OUTPUT_VARIABLE epoch OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    if(epoch)
        set(ENV{SOURCE_DATE_EPOCH} ${epoch})
    else()
        file(TIMESTAMP ${SOURCE}/CHANGELOG.md changed "%s" UTC)
        set(ENV{SOURCE_DATE_EPOCH} ${changed})
    endif()
endif()
string(TIMESTAMP BUILD_DATE "%Y-%m-%d" UTC)  # of SOURCE_DATE_EPOCH
configure_file(${SOURCE}/cmake/Version.h.in ${HEADER} @ONLY)
