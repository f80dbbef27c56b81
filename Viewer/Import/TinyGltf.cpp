// tinygltf compiled here rather than taken from Debian's shared library, whose class layout is not that of
// the header it comes with; this way it is also built with the sanitizers. It reads no files and no pictures
// by itself.
#define TINYGLTF_IMPLEMENTATION
#include <fstream> // the header forgets it
#include <tiny_gltf.h>
