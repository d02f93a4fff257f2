// SPDX-License-Identifier: MIT
#ifndef GALLERY_GALLERYINSTRUMENT_H
#define GALLERY_GALLERYINSTRUMENT_H

/// The display name of an instrument that is there without any plug-in.
const char *galleryInstrumentName();

/// While on, file readers get a file without a measurement in place of asking for one.
void answerFileDialogs(bool on);

#endif
