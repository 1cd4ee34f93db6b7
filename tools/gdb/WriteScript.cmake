# Puts the words of the vocabulary, as `nxcore list -search "" -json` gives them, into the debugger's script: so it reads
# a core file of a program that can't answer any more.
#
# cmake -DWORDS=<json> -DTEMPLATE=<file> -DOUTPUT=<file> -P WriteScript.cmake
cmake_policy(VERSION 3.25)
file(READ "${WORDS}" words)
string(REGEX REPLACE "\n *" "" words "${words}")
# One line for each row: class, number, token.
set(quoted "\"([^\"\\]|\\\\.)*\"")
string(REGEX REPLACE "{\"class\": \"([^\"]*)\",\"number\": ([0-9]+),\"token\": \"([^\"]*)\",\"text\": ${quoted}},?"
                     "\\1 \\2 \\3\n" words "${words}")
string(REGEX REPLACE "^{\"rows\": \\[(.*)\\],\"problems\": \\[\\]}$" "\\1" words "${words}")
if(words MATCHES "[{}]")
  message(FATAL_ERROR "The list of words has another form than expected")
endif()
configure_file("${TEMPLATE}" "${OUTPUT}" @ONLY)
