# Makes the page of the user guide: cmake -DMARKDOWN=program -DGUIDE=file.md -DPAGE=file.html -DTEXT=md -P user_guide.cmake
# TEXT is how the names of the texts end that are installed beside it.
execute_process(
  COMMAND ${MARKDOWN} -x tables -x fenced_code -x toc -x sane_lists ${GUIDE}
  OUTPUT_VARIABLE body COMMAND_ERROR_IS_FATAL ANY)

# The examples and the labs are installed beside the page.
string(REGEX REPLACE "\"\\.\\./(examples|labs)" "\"\\1" body "${body}")
string(REPLACE "/README.md\"" "/README.${TEXT}\"" body "${body}")
configure_file(${CMAKE_CURRENT_LIST_DIR}/user_guide.html.in ${PAGE} @ONLY)
