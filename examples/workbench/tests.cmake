# What the workbench prints, and how it fails.
set(installation "${CMAKE_CURRENT_SOURCE_DIR}/installation")
set(tour_lines "${CMAKE_CURRENT_SOURCE_DIR}/tests/tour_lines.txt")

example_test(workbench.tour_shows_every_station PROGRAM workbench EXPECT "CONTAINS=${tour_lines}")
example_test(workbench.tour_leaves_the_shipped_installation_alone PROGRAM workbench
  EXPECT "CONTAINS=${tour_lines}" "UNTOUCHED=${installation}")

# One message and nothing else.
example_test(workbench.one_message_in_english PROGRAM workbench
  EXPECT "OUTPUT=Net \"{1}\" has no driver." ARGUMENTS --language ENGLISH --set netlist --line 1)
example_test(workbench.one_message_in_german PROGRAM workbench
  EXPECT "OUTPUT=Netz „{1}“ hat keinen Treiber." ARGUMENTS --language GERMAN --set netlist --line 1)
example_test(workbench.one_message_in_japanese PROGRAM workbench
  EXPECT "OUTPUT=ネット「{1}」にドライバがありません。" ARGUMENTS --language JAPANESE --set netlist --line 1)
example_test(workbench.last_message_of_a_set PROGRAM workbench
  EXPECT "OUTPUT=基板面積は {1} cm²、銅箔率は {2} % です。" ARGUMENTS --language JAPANESE --set layout --line 44)
example_test(workbench.message_of_two_lines_shows_its_line_break PROGRAM workbench
  EXPECT "OUTPUT=Blatt „{1}“ enthält sich selbst.\nÖffnen Sie die Hierarchie und entfernen Sie einen der Verweise."
  ARGUMENTS --language GERMAN --set netlist --line 33)
example_test(workbench.names_of_sets_and_languages_ignore_letter_case PROGRAM workbench
  EXPECT "OUTPUT=Keine Fehler gefunden." ARGUMENTS --language german --set NetList --line 18)
example_test(workbench.language_of_the_user_when_none_is_named PROGRAM workbench
  EXPECT "OUTPUT=Alle Netze sind verlegt." ARGUMENTS --set layout --line 13)
example_test(workbench.unknown_language_gives_english_and_a_warning PROGRAM workbench
  EXPECT "OUTPUT=All nets are routed."
    "ERROR=workbench: LATIN: Unable to get language font for message retrieval"
  ARGUMENTS --language LATIN --set layout --line 13)
example_test(workbench.one_message_from_another_installation PROGRAM workbench
  EXPECT "OUTPUT=All nets are routed."
  ARGUMENTS --installation "${installation}" --language ENGLISH --set layout --line 13)

# Failures: the library's text, nothing printed, status 1.
foreach(line -1 0 45 2147483647)
  example_test(workbench.no_message_in_line_${line} PROGRAM workbench
    EXPECT STATUS=1 SILENT=TRUE "ERROR=workbench: Invalid message retrieval line number"
    ARGUMENTS --set netlist --line ${line})
endforeach()
example_test(workbench.set_that_the_directory_does_not_name PROGRAM workbench
  EXPECT STATUS=1 SILENT=TRUE "ERROR=workbench: Unable to find message set for message retrieval"
  ARGUMENTS --set router --line 1)
example_test(workbench.set_without_a_file PROGRAM workbench
  EXPECT STATUS=1 SILENT=TRUE "ERROR=workbench: Unable to locate message file for message retrieval"
  ARGUMENTS --set thermal --line 1)

# Wrong arguments: one line, nothing printed, status 2.
function(refuses name complaint)
  example_test(workbench.refuses_${name} PROGRAM workbench
    EXPECT STATUS=2 SILENT=TRUE "ERROR=workbench: ${complaint}" ARGUMENTS ${ARGN})
endfunction()
set(hint "(see workbench --help)")
refuses(an_unknown_option "unknown argument \"--colour\" ${hint}" --colour)
refuses(a_stray_word "unknown argument \"netlist\" ${hint}" netlist)
refuses(an_option_without_its_value "--set needs a value ${hint}" --line 1 --set)
refuses(a_line_that_is_no_number "--line needs a number, not \"1x\" ${hint}" --set netlist --line 1x)
refuses(a_line_number_out_of_range "--line needs a number, not \"2147483648\" ${hint}" --set netlist --line 2147483648)
refuses(a_set_without_a_line "--set and --line stand together ${hint}" --set netlist)
refuses(a_line_without_a_set "--set and --line stand together ${hint}" --line 1)
refuses(a_language_alone "--language needs --set and --line ${hint}" --language GERMAN)
refuses(a_directory_without_an_installation "no installation in \"nowhere\": it has no root/config"
  --installation nowhere)

example_test(workbench.help PROGRAM workbench
  EXPECT "CONTAINS=${CMAKE_CURRENT_SOURCE_DIR}/tests/help_lines.txt" ARGUMENTS --help)
