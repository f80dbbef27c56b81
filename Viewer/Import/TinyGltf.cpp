// tinygltf is compiled here rather than taken from Debian's shared library: Assimp needs libdraco, which
// exports an older tinygltf of its own under the same names, and the loader would take that. Built like this
// it reads no files and no pictures by itself.
#define TINYGLTF_IMPLEMENTATION
#include <fstream> // the header forgets it
#include <tiny_gltf.h>
