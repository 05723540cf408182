# Each folder's sources are collected by pattern, so adding a file needs no edit here.
function(ferrolund_collect_sources out_var dir)
  file(GLOB_RECURSE found CONFIGURE_DEPENDS
    ${dir}/*.cpp ${dir}/*.h)
  set(${out_var} ${found} PARENT_SCOPE)
endfunction()
