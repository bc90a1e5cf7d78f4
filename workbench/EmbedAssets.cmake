# Writes the files of the page in FOLDER, compressed, as arrays of bytes into FOLDER/Assets.gen.cpp.
set(source "#include \"start/EmbeddedAssets.h\"\n\nnamespace workbench {\n\nnamespace {\n\n")
set(rows "")
foreach(asset "index.html:/:text/html" "workbench.js:/workbench.js:text/javascript"
              "workbench.css:/workbench.css:text/css" "icon.svg:/icon.svg:image/svg+xml")
    string(REPLACE ":" ";" parts ${asset})
    list(GET parts 0 file)
    list(GET parts 1 path)
    list(GET parts 2 type)
    string(MAKE_C_IDENTIFIER ${file} name)
    execute_process(COMMAND gzip -9nc ${FOLDER}/${file} OUTPUT_FILE ${FOLDER}/${file}.gz
                    COMMAND_ERROR_IS_FATAL ANY)
    file(READ ${FOLDER}/${file}.gz bytes HEX)
    string(REGEX REPLACE "(..)" "0x\\1," bytes "${bytes}")
    string(REGEX REPLACE "(....................................................................................................)" "\\1\n" bytes "${bytes}")
    string(APPEND source "constexpr unsigned char ${name}[] = {\n${bytes}};\n\n")
    string(APPEND rows "    {\"${path}\", \"${type}; charset=utf-8\", ${name}, sizeof ${name}},\n")
endforeach()
string(APPEND source "} // namespace\n\nconst EmbeddedAssets embeddedAssets = {{\n${rows}}};\n\n"
              "} // namespace workbench\n")
file(WRITE ${FOLDER}/Assets.gen.cpp "${source}")
