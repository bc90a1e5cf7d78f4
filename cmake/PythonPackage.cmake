# The Python package as Debian's Python finds it: the modules, and what pip and importlib.metadata read.
# Other layouts need the wheel (scripts/wheel), which contains the libraries.
set(python_source ${PROJECT_SOURCE_DIR}/python)
set(python_dir lib/python3/dist-packages)

# Reads the value of one line of pyproject.toml.
function(parser_mx_python_property name result)
    file(STRINGS ${python_source}/pyproject.toml line REGEX "^${name} = \"")
    if(NOT line MATCHES "^${name} = \"([^\"]+)\"$")
        message(FATAL_ERROR "${python_source}/pyproject.toml: expected one line: ${name} = \"...\"")
    endif()
    set(${result} ${CMAKE_MATCH_1} PARENT_SCOPE)
endfunction()

parser_mx_python_property(name python_name)
parser_mx_python_property(description python_description)
parser_mx_python_property(requires-python python_requires)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${python_source}/pyproject.toml)
set(python_information ${PROJECT_BINARY_DIR}/python/${python_name}-${PROJECT_VERSION}.dist-info)
file(
    CONFIGURE OUTPUT ${python_information}/METADATA
    CONTENT "Metadata-Version: 2.1
Name: @python_name@
Version: @PROJECT_VERSION@
Summary: @python_description@
Requires-Python: @python_requires@
Provides-Extra: pandas
Requires-Dist: pandas ; extra == 'pandas'
"
    @ONLY)
# Without a list of files pip refuses to remove it, and names this installer.
file(CONFIGURE OUTPUT ${python_information}/INSTALLER CONTENT "debian\n")
file(CONFIGURE OUTPUT ${python_information}/top_level.txt CONTENT "${python_name}\n")

install(
    DIRECTORY ${python_source}/mxmodule
    DESTINATION ${python_dir}
    COMPONENT python
    FILES_MATCHING
    PATTERN "*.py"
    PATTERN "py.typed"
    PATTERN "__pycache__" EXCLUDE)
install(
    DIRECTORY ${python_information}
    DESTINATION ${python_dir}
    COMPONENT python)
