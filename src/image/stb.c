/* The one place where stb's image reader and writer are compiled, and the fence around them: only the formats that are
   asked for, nothing but memory in and out, no more memory than fenced_memory_limit allows, and none that was used
   before: where a damaged file leaves something out, there are zeros. */
#include "image/stb_fence.h"

#include <stdlib.h>
#include <string.h>

size_t fenced_memory_limit = (size_t)-1;

/* In front of each block; as long as the strictest alignment. */
typedef union {
    size_t size;
    max_align_t align;
} BlockHead;

static size_t memory_in_use;

static void* fenced_malloc(size_t size) {
    BlockHead* head;
    if (memory_in_use > fenced_memory_limit || size > fenced_memory_limit - memory_in_use) return NULL;
    head = (BlockHead*)calloc(1, sizeof *head + size);
    if (!head) return NULL;
    head->size = size;
    memory_in_use += size;
    return head + 1;
}

static void fenced_free(void* block) {
    if (!block) return;
    memory_in_use -= ((BlockHead*)block - 1)->size;
    free((BlockHead*)block - 1);
}

static void* fenced_realloc(void* block, size_t size) {
    void* const larger = fenced_malloc(size);
    if (larger && block) {
        const size_t had = ((BlockHead*)block - 1)->size;
        memcpy(larger, block, had < size ? had : size);
        fenced_free(block);
    }
    return larger;
}

/* The reader copies nothing to nowhere where a PNG begins with an empty piece of data, which memcpy does not allow. */
static void* copied(void* to, const void* from, size_t count) { return count == 0 ? to : memcpy(to, from, count); }
#define memcpy copied

#define STBI_MALLOC(size) fenced_malloc(size)
#define STBI_REALLOC(block, size) fenced_realloc(block, size)
#define STBI_FREE(block) fenced_free(block)
#define STB_IMAGE_IMPLEMENTATION
#define STBI_ONLY_PNG
#define STBI_ONLY_JPEG
#define STBI_ONLY_BMP
#define STBI_ONLY_TGA
#define STBI_NO_STDIO
#define STBI_NO_LINEAR
#define STBI_MAX_DIMENSIONS 16384
#define STBI_FAILURE_USERMSG
#include <stb_image.h>

#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STBI_WRITE_NO_STDIO
#include <stb_image_write.h>
