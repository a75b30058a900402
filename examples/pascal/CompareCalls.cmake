# Fails unless the Pascal unit UNIT declares the calls of the C interface that are in the list of exported symbols LIST, and no
# others.
file(STRINGS ${LIST} exported REGEX "^zorbase_")
file(STRINGS ${UNIT} declared REGEX "^(function|procedure) zorbase_")
list(TRANSFORM declared REPLACE "^[a-z]+ (zorbase_[a-z_0-9]+).*" "\\1")
list(SORT exported)
list(SORT declared)
if(NOT declared STREQUAL exported)
  message(FATAL_ERROR "${UNIT} declares\n  ${declared}\nand not\n  ${exported}")
endif()
