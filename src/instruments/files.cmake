# SPDX-License-Identifier: MIT
list(APPEND TAVIWIDGETS_HEADERS
    instruments/displaydevice.h
    instruments/orloinstrument.h
    instruments/spectro_fromfile.h
    instruments/spectrobuddy.h
    instruments/spectrostringkit.h)
list(APPEND TAVIWIDGETS_SOURCES
    instruments/displaydevice.cpp
    instruments/displayservices_p.h
    instruments/displayservices_xrandr.cpp
    instruments/gammatable.cpp
    instruments/gammatable_p.h
    instruments/instrumentdiscovery.cpp
    instruments/instrumentdiscovery_p.h
    instruments/instrumentmessage.cpp
    instruments/instrumentmessage_p.h
    instruments/internalinstruments.cpp
    instruments/internalinstruments_p.h
    instruments/orloinstrument.cpp
    instruments/orloinstrument_events.cpp
    instruments/orloinstrument_reads.cpp
    instruments/orloinstrumentcontexts_p.h
    instruments/orloinstrumentevent.cpp
    instruments/orloinstrumentevent_p.h
    instruments/orloinstrumentrecord_p.h
    instruments/spectrobuddy.cpp
    instruments/spectrobuddy_delivery.cpp
    instruments/spectrobuddy_interface.cpp
    instruments/spectro_fromfile.cpp
    instruments/spectro_fromfile_cgats.cpp
    instruments/spectro_fromfile_text.cpp
    instruments/spectrobuddystatuswatch_p.h
    instruments/spectrostringkit.cpp
    instruments/spectrostringkit_table.cpp)
