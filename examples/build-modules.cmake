# Builds the example modules: cmake -DMXTOOL=PROGRAM -DTEXTS=LIST -DOUTPUT=DIRECTORY -P this file.
# Some are odd or damaged on purpose, so what the rules find in them is shown on a failure only.
execute_process(
    COMMAND ${MXTOOL} build --quiet --force ${TEXTS} -o ${OUTPUT}
    RESULT_VARIABLE result
    ERROR_VARIABLE findings)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "The example modules cannot be built:\n${findings}")
endif()
