#include "tests/memory/failing_allocator.h"

#include <cstddef>
#include <cstdlib>

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void __libc_free(void* block);
}

namespace {

bool armed = false;
int pauses = 0;
int fail_at = 0;
bool fail_for_good = false;
int allocations = 0;
long live_blocks = 0;

bool FailsNow() {
  if (!armed || pauses > 0) return false;
  ++allocations;
  return fail_at != 0 && (fail_for_good ? allocations >= fail_at : allocations == fail_at);
}

void* Counted(void* block) {
  if (block != nullptr) ++live_blocks;
  return block;
}

}  // namespace

extern "C" {

void* malloc(std::size_t size) { return FailsNow() ? nullptr : Counted(__libc_malloc(size)); }

void* calloc(std::size_t count, std::size_t size) {
  return FailsNow() ? nullptr : Counted(__libc_calloc(count, size));
}

void* realloc(void* block, std::size_t size) {
  if (FailsNow()) return nullptr;
  return block == nullptr ? Counted(__libc_malloc(size)) : __libc_realloc(block, size);
}

void free(void* block) {
  if (block != nullptr) --live_blocks;
  __libc_free(block);
}

}  // extern "C"

namespace failing_allocator {

void Arm(int at, bool for_good) {
  fail_at = at;
  fail_for_good = for_good;
  allocations = 0;
  armed = true;
}

int Disarm() {
  armed = false;
  return allocations;
}

long LiveBlocks() { return live_blocks; }

Pause::Pause() { ++pauses; }

Pause::~Pause() { --pauses; }

}  // namespace failing_allocator
