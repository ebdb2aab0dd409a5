# Pictures that are compared or shown are drawn from one font everywhere: DejaVu Sans, wherever
# the distribution keeps it. macOS draws text with its own font only.
if(APPLE)
    return()
endif()
find_file(AMPERLY_PINNED_FONT DejaVuSans.ttf
    PATHS /usr/share/fonts /usr/local/share/fonts
    PATH_SUFFIXES truetype/dejavu dejavu dejavu-sans-fonts TTF truetype
    DOC "The font of pictures that are compared or shown")
