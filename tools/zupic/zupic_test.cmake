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

# Standard input on several threads: the results of one thread, in input
# order, across many batches; a line that does not match still fails the run.
set(lines "")
set(expected "")
foreach(value RANGE 1 20000)
  string(APPEND lines "${value}\n")
  math(EXPR thousands "${value} / 1000")
  math(EXPR rest "${value} % 1000")
  if(thousands GREATER 0)
    string(LENGTH "${rest}" digits)
    if(digits EQUAL 1)
      set(rest "00${rest}")
    elseif(digits EQUAL 2)
      set(rest "0${rest}")
    endif()
    string(APPEND expected "${thousands}.${rest}\n")
  else()
    string(APPEND expected "${value}\n")
  endif()
endforeach()
expect(NAME format_threads EXIT 0 OUT "${expected}" INPUT "${lines}"
       ARGS format "num{zz,zz9}" --locale de_DE -j 4)
expect(NAME format_threads_no_match EXIT 1 OUT "1\n\n3\n" ERR "\"x\" does not match"
       INPUT "1\nx\n3\n" ARGS format "num{zz9}" -j3)
expect(NAME threads_need_a_number EXIT 2 ERR "-j needs a number"
       ARGS format "num{9}" -j 0)
expect(NAME threads_for_pictures_only EXIT 2 ERR "-j applies to format and parse"
       ARGS locales --jobs 2)

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

# Dates and times as values.
expect(NAME date_format EXIT 0 OUT "mars 5, 2024\nfévrier 5, 2024\n"
       ARGS date format 11 2024-03-05 2024-02-05 --locale ja)
expect(NAME date_format_locale EXIT 0 OUT "05.03.2024\n" ARGS date format 28 2024-03-05 --locale de_DE)
expect(NAME date_format_stdin EXIT 1 OUT "令和 6年03月05日\n\n" INPUT "2024-03-05\n2024-02-30\n"
       ERR "error 17187: The day is not valid" ARGS date format 25 --locale ja)
expect(NAME date_format_not_a_date EXIT 1 OUT "\n" ERR "\"5 March\" is not a date"
       ARGS date format 21 "5 March")
expect(NAME date_parse_split EXIT 0 OUT "2029-03-05\n1930-03-05\n"
       ARGS date parse 17 05.03.29 05.03.30 --split 30)
expect(NAME date_parse_no_match EXIT 1 OUT "\n" ERR "is not a date in that format"
       ARGS date parse 21 2024-02-30)
expect(NAME date_add EXIT 0 OUT "2024-03-02\n" ARGS date add 2024-01-31 0 1 0)
expect(NAME date_add_backwards EXIT 1 OUT "\n" ERR "error 17187"
       ARGS date add 2024-03-01 0 0 -1)
expect(NAME date_subtract EXIT 0 OUT "2024-02-29\n" ARGS date subtract 2024-03-01 0 0 1)
expect(NAME date_diff EXIT 0 OUT "+1y 1m 0d = 394 days\n" ARGS date diff 2024-02-29 2023-01-31)
expect(NAME date_diff_before_1900 EXIT 0 OUT "-224y 0m 0d = -81814 days\n"
       ARGS date diff 1800-01-01 2024-01-01)
expect(NAME time_format EXIT 0 OUT "02:05:09 PM\n12:30:00 AM\n"
       ARGS time format 5 14:05:09 12:30)
expect(NAME time_parse_stdin EXIT 1 OUT "14:30:00.000\n\n09:00:05.005\n"
       INPUT "2:30 pm\n25:00\n9.0.5.5\n" ERR "error 17234" ARGS time parse)
expect(NAME date_bad_format EXIT 2 ERR "number from 0 to 31" ARGS date format 32 2024-03-05)
expect(NAME date_bad_amount EXIT 2 ERR "whole numbers" ARGS date add 2024-03-05 1 x 0)
expect(NAME time_bad_form EXIT 2 ERR "number from 0 to 6" ARGS time format 7 10:00)
expect(NAME bad_split EXIT 2 ERR "--split needs" ARGS date parse 17 05.03.29 --split -1)

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

# Base64 through standard input and output.
expect(NAME base64_encode EXIT 0 OUT "TWFu\n" INPUT "Man" ARGS base64 encode)
expect(NAME base64_encode_empty EXIT 0 OUT "" INPUT "" ARGS base64 encode)
expect(NAME base64_encode_no_breaks EXIT 0 OUT "TWFuTWE=" INPUT "ManMa" ARGS base64 encode --no-breaks)
string(REPEAT "0123456789" 12 text120)
expect(NAME base64_encode_lines EXIT 0 INPUT "${text120}"
       OUT "MDEyMzQ1Njc4OTAxMjM0NTY3ODkwMTIzNDU2Nzg5MDEyMzQ1Njc4OTAxMjM0NTY3ODkwMTIzNDU2\nNzg5MDEyMzQ1Njc4OTAxMjM0NTY3ODkwMTIzNDU2Nzg5MDEyMzQ1Njc4OTAxMjM0NTY3ODkwMTIz\nNDU2Nzg5\n"
       ARGS base64 encode)
expect(NAME base64_decode_crlf EXIT 0 OUT "ManMa" INPUT "TWFu\r\nTWE=\r\n" ARGS base64 decode)
expect(NAME base64_decode_lines EXIT 0 OUT "${text120}"
       INPUT "MDEyMzQ1Njc4OTAxMjM0NTY3ODkwMTIzNDU2Nzg5MDEyMzQ1Njc4OTAxMjM0NTY3ODkwMTIzNDU2\nNzg5MDEyMzQ1Njc4OTAxMjM0NTY3ODkwMTIzNDU2Nzg5MDEyMzQ1Njc4OTAxMjM0NTY3ODkwMTIz\nNDU2Nzg5\n"
       ARGS base64 decode)
expect(NAME base64_decode_invalid EXIT 1 ERR "error 16777: The text is not valid Base64 data"
       INPUT "TW-u\n" ARGS base64 decode)
expect(NAME base64_decode_dangling EXIT 1 ERR "error 16777" INPUT "TWFuTW==\n" ARGS base64 decode)
# A binary file (zupic itself) against coreutils' base64, and back.
find_program(COREUTILS_BASE64 base64)
if(COREUTILS_BASE64)
  execute_process(COMMAND ${COREUTILS_BASE64} INPUT_FILE ${ZUPIC}
                  OUTPUT_FILE ${WORK_DIR}/zupic.coreutils.b64)
  execute_process(COMMAND ${ZUPIC} base64 encode INPUT_FILE ${ZUPIC}
                  OUTPUT_FILE ${WORK_DIR}/zupic.b64 RESULT_VARIABLE encoded)
  execute_process(COMMAND ${ZUPIC} base64 decode INPUT_FILE ${WORK_DIR}/zupic.b64
                  OUTPUT_FILE ${WORK_DIR}/zupic.decoded RESULT_VARIABLE decoded)
  file(SHA256 ${WORK_DIR}/zupic.coreutils.b64 expected)
  file(SHA256 ${WORK_DIR}/zupic.b64 actual)
  file(SHA256 ${ZUPIC} original)
  file(SHA256 ${WORK_DIR}/zupic.decoded back)
  if(NOT encoded EQUAL 0 OR NOT decoded EQUAL 0 OR NOT expected STREQUAL actual
     OR NOT original STREQUAL back)
    message(SEND_ERROR "base64 of a binary file: exit ${encoded}/${decoded}, "
                       "differs from coreutils or does not decode back")
    math(EXPR failures "${failures} + 1")
  endif()
endif()
expect(NAME base64_no_direction EXIT 2 ERR "encode or decode" ARGS base64)
expect(NAME base64_no_breaks_decode EXIT 2 ERR "base64 encode only" ARGS base64 decode --no-breaks)

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
