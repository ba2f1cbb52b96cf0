# Copies each scene folder of FROM that TO does not have: scenes edited there are kept.
file(GLOB scenes LIST_DIRECTORIES true "${FROM}/*")
foreach(scene IN LISTS scenes)
  get_filename_component(name "${scene}" NAME)
  if(NOT EXISTS "${TO}/${name}")
    file(COPY "${scene}" DESTINATION "${TO}")
  endif()
endforeach()
