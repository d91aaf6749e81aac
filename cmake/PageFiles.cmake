# Carries files inside the program: writes a source that defines pageFiles() of
# tools/serve/page_files.h, in which the assembler puts each file's bytes as they are. As a function:
#
#   prismal_page_files(OUTPUT.cpp FILE...)
function(prismal_page_files output)
  set(assembly "")
  set(symbols "")
  set(entries "")
  set(index 0)
  foreach(file ${ARGN})
    get_filename_component(name ${file} NAME)
    string(APPEND assembly "asm(\".section .rodata\\n.global prismal_page_${index}\\n"
      ".global prismal_page_${index}_end\\n.hidden prismal_page_${index}\\n"
      ".hidden prismal_page_${index}_end\\nprismal_page_${index}:\\n.incbin \\\"${file}\\\"\\n"
      "prismal_page_${index}_end:\\n.byte 0\\n.text\\n\");\n")
    string(APPEND symbols "extern const char prismal_page_${index};\n"
      "extern const char prismal_page_${index}_end;\n")
    string(APPEND entries "    {\"${name}\", {&prismal_page_${index}, &prismal_page_${index}_end}},\n")
    math(EXPR index "${index} + 1")
  endforeach()
  file(GENERATE OUTPUT ${output} CONTENT
"#include \"serve/page_files.h\"

${assembly}
extern \"C\" {
${symbols}}

namespace tools::serve {
std::span<const PageFile> pageFiles() {
  static const PageFile files[] = {
${entries}  };
  return files;
}
}  // namespace tools::serve
")
  set_source_files_properties(${output} PROPERTIES OBJECT_DEPENDS "${ARGN}")
endfunction()
