# Updates a copy of the catalogue and fails when that changes it, or when a text is untranslated.
#   FOLDER  where sources and catalogue lie together; the plug-in's stand apart
set(folders client family/kx300 service upgrade view)
if(FOLDER)
  set(folders ${FOLDER})
  file(COPY ${FOLDER}/${CATALOGUE} DESTINATION ${WORK_DIR})
else()
  list(TRANSFORM folders PREPEND ${SOURCE_DIR}/)
  file(COPY ${SOURCE_DIR}/translations/${CATALOGUE} DESTINATION ${WORK_DIR})
endif()
execute_process(COMMAND ${LUPDATE} -silent -locations none ${folders}
  -ts ${WORK_DIR}/${CATALOGUE} RESULT_VARIABLE failed ERROR_VARIABLE problems)
# lupdate goes on behind what it cannot parse, and misses texts.
if(failed OR problems)
  message(FATAL_ERROR "lupdate failed: ${problems}")
endif()
file(STRINGS ${WORK_DIR}/${CATALOGUE} open_texts
  REGEX "type=\"(unfinished|obsolete|vanished)\"" ENCODING UTF-8)
list(LENGTH open_texts open_count)
if(open_count)
  message(FATAL_ERROR "${open_count} texts are not translated or no longer in the sources: "
    "build update-translations and translate")
endif()
