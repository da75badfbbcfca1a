# cmake -D IN=... -D OUT=... -D RELEASES=... -P FillIn.cmake: the metadata with the list of releases in it.
cmake_minimum_required(VERSION 3.25)
file(READ ${IN} text)
file(READ ${RELEASES} releases)
string(REPLACE "@RELEASES@" "${releases}" told "${text}")
if(told STREQUAL text)
  message(FATAL_ERROR "${IN} has no place for the releases")
endif()
file(WRITE ${OUT} "${told}")
