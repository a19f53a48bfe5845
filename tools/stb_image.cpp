// stb_image's decoders, for PNG and JPEG only: fewer decoders face untrusted files.
#define STB_IMAGE_IMPLEMENTATION
#define STBI_ONLY_PNG
#define STBI_ONLY_JPEG
#define STBI_NO_STDIO
#define STBI_MAX_DIMENSIONS 65536
#include <stb/stb_image.h>
