/* stb's image reader, for comparison. */
#define STB_IMAGE_IMPLEMENTATION
#define STBI_ONLY_TGA
#define STBI_NO_STDIO
#include <stb_image.h>
