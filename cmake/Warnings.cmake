# One interface target carries the warning flags for every target of the project.
add_library(ferrolund_warnings INTERFACE)
target_compile_options(ferrolund_warnings INTERFACE -Wall -Wextra)
if(FERROLUND_WERROR)
  target_compile_options(ferrolund_warnings INTERFACE -Werror)
endif()
