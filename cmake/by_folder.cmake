# by_folder(TARGET ["FOLDER FOLDER..."...]): in a unity build (CMakePresets.json says which) the files of one folder are
# compiled as one, and those of folders that are named together: most of the time goes into what all of them include.
# Names of unnamed namespaces are therefore to be unique in them. Call it behind the last source of the target.
function(by_folder target)
  get_target_property(sources ${target} SOURCES)
  foreach(source ${sources})
    cmake_path(GET source PARENT_PATH folder)
    string(REPLACE "${PROJECT_SOURCE_DIR}/" "" folder "${folder}")
    foreach(together ${ARGN})
      string(REPLACE " " ";" folders "${together}")
      if(folder IN_LIST folders)
        set(folder "${together}")
      endif()
    endforeach()
    string(MAKE_C_IDENTIFIER "${folder}" group)
    set_source_files_properties(${source} TARGET_DIRECTORY ${target} PROPERTIES UNITY_GROUP "${group}")
  endforeach()
  set_target_properties(${target} PROPERTIES UNITY_BUILD_MODE GROUP)
endfunction()
