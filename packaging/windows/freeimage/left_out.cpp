// The formats that this build of FreeImage leaves out. FreeImage numbers its formats by the order in which they
// register, and one that names no format registers nothing and would shift the numbers of all that follow; so each
// gives its name, and neither recognises, loads nor saves a file.
#include "FreeImage.h"
#include "Plugin.h"

#define LEFT_OUT(NAME)                                             \
  static const char* DLL_CALLCONV Format##NAME() { return #NAME; } \
  void DLL_CALLCONV Init##NAME(Plugin* plugin, int) { plugin->format_proc = Format##NAME; }

LEFT_OUT(JNG)
LEFT_OUT(MNG)
LEFT_OUT(TIFF)
LEFT_OUT(PSD)
LEFT_OUT(G3)
LEFT_OUT(EXR)
LEFT_OUT(J2K)
LEFT_OUT(JP2)
LEFT_OUT(RAW)
LEFT_OUT(WEBP)
LEFT_OUT(JXR)
