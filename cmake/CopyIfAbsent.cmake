# SPDX-License-Identifier: MIT
# Copies the file FROM into the folder TO unless a file of that name stands there.
get_filename_component(name ${FROM} NAME)
if(EXISTS ${FROM} AND NOT EXISTS ${TO}/${name})
    file(COPY ${FROM} DESTINATION ${TO})
endif()
