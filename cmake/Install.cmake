# What `cmake --install` puts where. The program finds its library from where it lies itself, so
# bin/ and lib/ stand beside each other, whatever the prefix.
include(GNUInstallDirs)

set(PRISMAL_ZSH_COMPLETIONS "${CMAKE_INSTALL_DATAROOTDIR}/zsh/site-functions" CACHE STRING
  "Where zsh finds completions, below the prefix")
set(share ${CMAKE_INSTALL_DATAROOTDIR})

install(TARGETS prismal_command RUNTIME DESTINATION bin)
install(TARGETS prismal prismal_http_module LIBRARY DESTINATION lib/prismal)
install(DIRECTORY examples/ DESTINATION ${share}/prismal/examples PATTERN art EXCLUDE)
install(FILES README.md CHANGELOG.md DESTINATION ${share}/doc/prismal)
install(DIRECTORY docs DESTINATION ${share}/doc/prismal)

set(made ${CMAKE_BINARY_DIR}/made)
file(MAKE_DIRECTORY ${made})
# The source is not installed: of a link into it the words alone.
foreach(page theme-format scenario-format)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS docs/${page}.md)
  file(READ docs/${page}.md text)
  string(REGEX REPLACE "\\[([^]]*)\\]\\(\\.\\./(host|src|tests)/[^)]*\\)" "\\1" text "${text}")
  file(WRITE ${made}/docs/${page}.md "${text}")
  install(FILES ${made}/docs/${page}.md DESTINATION ${share}/doc/prismal/docs)
endforeach()

# Made by the program itself, from the definition of its command line.
# The documents' links to examples lead to where these lie.
file(CREATE_LINK ../../prismal/examples ${made}/examples SYMBOLIC)
install(FILES ${made}/examples DESTINATION ${share}/doc/prismal)
foreach(shell bash zsh fish)
  add_custom_command(OUTPUT ${made}/prismal.${shell}
    COMMAND prismal_command completion ${shell} > ${made}/prismal.${shell}
    DEPENDS prismal_command VERBATIM)
  list(APPEND made_files ${made}/prismal.${shell})
endforeach()
install(FILES ${made}/prismal.bash RENAME prismal DESTINATION ${share}/bash-completion/completions)
install(FILES ${made}/prismal.zsh RENAME _prismal DESTINATION ${PRISMAL_ZSH_COMPLETIONS})
install(FILES ${made}/prismal.fish DESTINATION ${share}/fish/vendor_completions.d)

# As Debian has what it keeps for people: packed, and without the time of day.
find_program(GZIP gzip REQUIRED)
add_custom_command(OUTPUT ${made}/changelog.gz
  COMMAND ${GZIP} -9n < ${PROJECT_SOURCE_DIR}/CHANGELOG.md > ${made}/changelog.gz
  DEPENDS CHANGELOG.md VERBATIM)
list(APPEND made_files ${made}/changelog.gz)
install(FILES ${made}/changelog.gz DESTINATION ${share}/doc/prismal)

# Manual pages are the documents of docs/ in another dress.
find_program(LOWDOWN lowdown DOC "Makes manual pages of Markdown; without it there are none")

# prismal_manual(NAME SECTION SUMMARY SEE_ALSO PAGE [COMMANDS]): COMMANDS is a file of more Markdown.
function(prismal_manual name section summary see_also page)
  set(markdown ${made}/${name}.md)
  set(manual ${made}/${name}.${section})
  add_custom_command(OUTPUT ${manual}.gz
    COMMAND ${CMAKE_COMMAND} -D PAGE=${PROJECT_SOURCE_DIR}/${page} -D NAME=${name}
      -D SUMMARY=${summary} -D SEE_ALSO=${see_also} -D COMMANDS=${ARGN} -D OUTPUT=${markdown}
      -P ${PROJECT_SOURCE_DIR}/cmake/man_page.cmake
    COMMAND ${LOWDOWN} -s -t man --nroff-nolinks --parse-no-metadata --out-no-smarty
      -M title=${name} -M section=${section} -M "source=Prismal ${PROJECT_VERSION}"
      -M "volume=Prismal manual" -o ${manual} ${markdown}
    # Names are no words: broken at a hyphen or stretched over a line they can't be copied. A table
    # that expands to the width of the line leaves no room between columns when it needs all of it,
    # and no table has room behind it. A terminal has one page: where another would begin, an option
    # would be parted from its text.
    COMMAND sed -i -e "/^.TH/a .nr HY 0\\n.hy 0\\n.ad l\\n.if n .pl 100000" -e "/^.TE/a .sp"
      -e "s/tab(|) expand allbox/tab(|) allbox/" ${manual}
    COMMAND ${GZIP} -9nf ${manual}
    DEPENDS ${page} cmake/man_page.cmake ${ARGN} VERBATIM)
  set(made_files ${made_files} ${manual}.gz PARENT_SCOPE)
  install(FILES ${manual}.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man${section})
endfunction()

if(LOWDOWN)
  add_custom_command(OUTPUT ${made}/commands.md
    COMMAND prismal_command manual > ${made}/commands.md DEPENDS prismal_command VERBATIM)
  prismal_manual(prismal 1 "draw keyboard themes on the desk" "prismal-theme(5)" docs/command.md
    ${made}/commands.md)
  prismal_manual(prismal-theme 5 "the format of keyboard themes" "prismal(1)" docs/theme-format.md)
else()
  message(STATUS "No lowdown: manual pages are left out")
endif()
add_custom_target(prismal_made ALL DEPENDS ${made_files})
