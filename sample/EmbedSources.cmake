# Writes a C++ file that holds every file below SOURCE_ROOT as bytes, with its relative
# name (forward slashes). Run as a script: cmake -DSOURCE_ROOT=... -DOUTPUT=... -P this.
file(GLOB_RECURSE files RELATIVE ${SOURCE_ROOT} ${SOURCE_ROOT}/*)
list(SORT files)
set(body "")
set(table "")
set(index 0)
foreach(name IN LISTS files)
  file(READ ${SOURCE_ROOT}/${name} hex HEX)
  string(LENGTH "${hex}" digits)
  math(EXPR size "${digits} / 2")
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${hex}")
  string(APPEND body "const unsigned char kFile${index}[] = {${bytes}0};\n")
  string(APPEND table "    {\"${name}\", kFile${index}, ${size}},\n")
  math(EXPR index "${index} + 1")
endforeach()
file(WRITE ${OUTPUT}.tmp
  "// Made by EmbedSources.cmake from sample/sources; do not edit.\n"
  "#include \"generator/sources.h\"\n\n"
  "namespace ferrolund::sample {\nnamespace {\n${body}}  // namespace\n\n"
  "const EmbeddedFile kEmbeddedFiles[] = {\n${table}};\n"
  "const std::size_t kEmbeddedFileCount = ${index};\n\n"
  "}  // namespace ferrolund::sample\n")
file(COPY_FILE ${OUTPUT}.tmp ${OUTPUT} ONLY_IF_DIFFERENT)
file(REMOVE ${OUTPUT}.tmp)
