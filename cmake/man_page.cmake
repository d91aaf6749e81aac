# Makes Markdown for a manual page out of a document of docs/, as a script:
#
#   cmake -D PAGE=in.md -D NAME=prismal -D SUMMARY=... [-D COMMANDS=commands.md] -D OUTPUT=out.md
#         -D SEE_ALSO="prismal-theme(5)" -P man_page.cmake
#
# The title becomes the NAME section that manuals are searched by, headings go up by one level, and
# pictures and the table of contents, which a terminal can't follow, go. COMMANDS stands where the
# document has the mark <!-- commands -->.
file(READ "${PAGE}" text)
if(COMMANDS)
  file(READ "${COMMANDS}" commands)
  string(REPLACE "<!-- commands -->" "## Commands\n\n${commands}" text "${text}")
  # A command stands below that heading.
  string(REGEX REPLACE "\n##(#?) prismal ([^\n]+)\n" "\n###\\1 prismal \\2\n" text "${text}")
endif()
string(REGEX REPLACE "!\\[[^]]*\\]\\([^)]*\\)\n+(\\*[^\n]*\n)?" "" text "${text}")
string(REGEX REPLACE "\n[0-9]+\\. \\[[^\n]*\\]\\(#[^\n]*" "" text "${text}")
string(REGEX REPLACE "^# [^\n]*\n" "# Name\n\n${NAME} - ${SUMMARY}\n\n# Description\n" text "${text}")
string(REGEX REPLACE "\n#(#+ )" "\n\\1" text "${text}")
string(APPEND text "\n# See also\n\n${SEE_ALSO}\n")
file(WRITE "${OUTPUT}" "${text}")
