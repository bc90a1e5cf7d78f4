# The programs of this room once more under each condition of a host, see HostCondition.cpp.

# The locale, generated here: it is not everywhere installed.
set(locale_root ${PROJECT_BINARY_DIR}/locale)
find_program(LOCALEDEF localedef REQUIRED)
add_custom_command(
    OUTPUT ${locale_root}/de_DE.UTF-8/LC_NUMERIC
    COMMAND ${CMAKE_COMMAND} -E make_directory ${locale_root}
    COMMAND ${LOCALEDEF} --no-archive -i de_DE -f UTF-8 ${locale_root}/de_DE.UTF-8
    VERBATIM)
add_custom_target(test-locale DEPENDS ${locale_root}/de_DE.UTF-8/LC_NUMERIC)

set(conditions locale two-parsers)
foreach(level none fatal critical error warning notice information debug trace)
    list(APPEND conditions level-${level})
endforeach()
# Death tests tell line numbers to their child process through the streams of the locale.
set(not_in_a_locale *Death*)
# The long tests, which say nothing here that others do not.
set(not_again BufferBounds.Every*:Guarded*.Every*:TextIndex*)
# And the level that a new parser has.
set(not_at_a_level ${not_again}:Construction.Sets*:LoggingLevel.Unknown*:*Death*)

foreach(part driver translation fieldbus)
    set(program test-mxparser_kv38-${part})
    target_sources(${program} PRIVATE HostCondition.cpp)
    add_dependencies(${program} test-locale)
    foreach(condition IN LISTS conditions)
        set(filter -${not_again})
        if(condition STREQUAL locale)
            set(filter -${not_in_a_locale})
        elseif(condition MATCHES "^level-")
            set(filter -${not_at_a_level})
        endif()
        add_test(NAME host/${condition}/${part} COMMAND ${program} --gtest_brief=1
                                                        --gtest_filter=${filter})
        set_tests_properties(
            host/${condition}/${part}
            PROPERTIES ENVIRONMENT
                       "HOST_CONDITION=${condition};LC_ALL=de_DE.UTF-8;LOCPATH=${locale_root}")
    endforeach()
endforeach()
