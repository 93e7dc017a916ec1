# Runs the built zupic as a process and checks its output and exit status.
#   cmake -DZUPIC=/path/to/zupic -DWORK_DIR=/tmp/dir -P zupic_test.cmake
#
# expect(NAME n EXIT s [OUT text] [ERR regex] [INPUT text] [ENV var=value...]
#        ARGS argument...)
# OUT is compared exactly; ERR is a regular expression that standard error
# must match (without ERR, standard error must be empty).
set(failures 0)

function(expect)
  cmake_parse_arguments(RUN "" "NAME;EXIT;OUT;ERR;INPUT" "ARGS;ENV" ${ARGN})
  set(command ${ZUPIC} ${RUN_ARGS})
  # The environment's locale would otherwise decide the default.
  set(command ${CMAKE_COMMAND} -E env --unset=LC_ALL --unset=LC_MESSAGES --unset=LANG
              ${RUN_ENV} ${command})
  set(input)
  if(DEFINED RUN_INPUT)
    file(WRITE ${WORK_DIR}/zupic_input.txt "${RUN_INPUT}")
    set(input INPUT_FILE ${WORK_DIR}/zupic_input.txt)
  endif()
  execute_process(COMMAND ${command} ${input}
                  RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
  set(problems)
  if(NOT status STREQUAL RUN_EXIT)
    list(APPEND problems "exit status ${status}, expected ${RUN_EXIT}")
  endif()
  if(DEFINED RUN_OUT AND NOT out STREQUAL RUN_OUT)
    list(APPEND problems "output [${out}], expected [${RUN_OUT}]")
  endif()
  if(DEFINED RUN_ERR)
    if(NOT err MATCHES "${RUN_ERR}")
      list(APPEND problems "error output [${err}] does not match [${RUN_ERR}]")
    endif()
  elseif(NOT err STREQUAL "")
    list(APPEND problems "unexpected error output [${err}]")
  endif()
  if(problems)
    message(SEND_ERROR "${RUN_NAME}: ${problems}")
    math(EXPR count "${failures} + 1")
    set(failures ${count} PARENT_SCOPE)
  endif()
endfunction()

# Formatting and parsing, with and without a match.
expect(NAME format_values EXIT 0 OUT "1,234.50\n0.25\n"
       ARGS format "num{z,zz9.99}" 1234.5 0.25 --locale en_US)
expect(NAME format_locale_option_first EXIT 0 OUT "1.234,50\n"
       ARGS --locale de_DE format "num{z,zz9.99}" 1234.5)
expect(NAME format_date_fr EXIT 0 OUT "mardi, 5 mars 2024\n"
       ARGS format "date{EEEE, D MMMM YYYY}" 2024-03-05 --locale=fr_FR)
expect(NAME format_alternatives EXIT 0 OUT "12\n12345\n"
       ARGS format "num{99}|num{99999}" 12 12345 --locale en_US)
expect(NAME format_no_match EXIT 1 OUT "012\n\n" ERR "does not match"
       ARGS format "num{999}" 12 12345 --locale en_US)
expect(NAME parse_number EXIT 0 OUT "1234.5\n"
       ARGS parse "num{z,zz9.99}" "1.234,50" --locale de_DE)
expect(NAME parse_date EXIT 0 OUT "2024-03-05\n"
       ARGS parse "date{EEEE, D MMMM YYYY}" "mardi, 5 mars 2024" --locale fr_FR)
expect(NAME parse_no_match EXIT 1 OUT "\n" ERR "does not match"
       ARGS parse "num{999}" "abc" --locale en_US)

# Standard input, one value a line, Windows line ends too.
expect(NAME format_stdin EXIT 0 OUT "001\n020\n300\n" INPUT "1\n20\r\n300\n"
       ARGS format "num{999}" --locale en_US)
expect(NAME parse_stdin_with_failure EXIT 1 OUT "7\n\n" ERR "does not match" INPUT "7\nx\n"
       ARGS parse "num{9}" --locale en_US)

# The environment's locale, and en_US when it names none.
expect(NAME environment_locale EXIT 0 OUT "1.234,50\n" ENV LANG=de_DE.UTF-8
       ARGS format "num{z,zz9.99}" 1234.5)
expect(NAME default_locale EXIT 0 OUT "1,234.50\n" ENV LANG=C
       ARGS format "num{z,zz9.99}" 1234.5)

# Library errors reach the user with their message id and text.
expect(NAME compound_picture EXIT 1 OUT "\n" ERR "16480: Compound pictures are not supported"
       ARGS format "num{9} text{X}" 5 --locale en_US)

# Lengths: read leniently, converted with --to, written with Text.
expect(NAME length_to_inches EXIT 0 OUT "1in\n1in\n1in\n"
       ARGS length 72pt 6pc 25.4mm --to in)
expect(NAME length_bare_number_unit EXIT 0 OUT "0.39in\n"
       ARGS length 1 --unit CM --to=in --decimals 2)
expect(NAME length_keeps_its_unit EXIT 0 OUT "1.5in\n-12pt\n6pc\n"
       ARGS length "1.5 inches" -12pt "6 picas")
expect(NAME length_stdin EXIT 1 OUT "38.1mm\n\n4.2333mm\n" ERR "\"abc\" is not a length"
       INPUT "1.5in\nabc\r\n12 points\n" ARGS length --to mm)
expect(NAME length_empty_line EXIT 1 OUT "\n" ERR "\"\" is not a length" INPUT "\n" ARGS length)
expect(NAME length_unknown_unit EXIT 2 ERR "unknown unit \"furlong\"" ARGS length 1in --to furlong)
expect(NAME length_bad_decimals EXIT 2 ERR "decimals" ARGS length 1in --decimals 9)
expect(NAME length_option_elsewhere EXIT 2 ERR "belong to length" ARGS format 9 1 --to in)
expect(NAME length_option_value EXIT 2 ERR "--unit needs a value" ARGS length 1 --unit)

# Locales.
expect(NAME locales EXIT 0 ARGS locales)
execute_process(COMMAND ${ZUPIC} locales OUTPUT_VARIABLE list)
if(NOT list MATCHES "\nde_CH +German_Switzerland" OR NOT list MATCHES "\nja_JP ")
  message(SEND_ERROR "locales: de_CH or ja_JP missing from [${list}]")
  math(EXPR failures "${failures} + 1")
endif()
execute_process(COMMAND ${ZUPIC} locale fr_FR OUTPUT_VARIABLE french RESULT_VARIABLE status)
if(NOT status EQUAL 0 OR NOT french MATCHES "janvier" OR NOT french MATCHES "decimal point +,")
  message(SEND_ERROR "locale fr_FR: status ${status}, output [${french}]")
  math(EXPR failures "${failures} + 1")
endif()
expect(NAME unknown_locale EXIT 1 ERR "unknown locale" ARGS locale xx_YY)

# Usage.
expect(NAME version EXIT 0 OUT "zupic ${VERSION}\n" ARGS --version)
expect(NAME help EXIT 0 ARGS --help)
expect(NAME no_command EXIT 2 ERR "usage: zupic" ARGS)
expect(NAME unknown_command EXIT 2 ERR "unknown command" ARGS frobnicate)
expect(NAME no_picture EXIT 2 ERR "no picture" ARGS format)
expect(NAME unknown_option EXIT 2 ERR "unknown option" ARGS format 9 1 --colour)
expect(NAME missing_locale_name EXIT 2 ERR "needs a locale" ARGS format 9 1 --locale)
expect(NAME open_quote EXIT 2 ERR "quoted literal" ARGS format "'open" 1)

if(failures GREATER 0)
  message(FATAL_ERROR "${failures} zupic check(s) failed")
endif()
