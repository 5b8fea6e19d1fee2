# Fails unless README holds a block of C++ that is PROGRAM to the last character.
cmake_minimum_required(VERSION 3.25)
file(READ "${README}" readme)
file(READ "${PROGRAM}" program)
string(FIND "${readme}" "```cpp\n${program}```\n" at)
if(at EQUAL -1)
  message(FATAL_ERROR "${README} does not show ${PROGRAM} as it is")
endif()
