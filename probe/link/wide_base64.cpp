#include "probe/link/wide_base64.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace tarnix {

#if defined(__x86_64__)
namespace {

// What one step takes and makes. It reads beyond what it takes: 12 bytes for each half of the
// register, of which the second is read as 16.
constexpr std::size_t stepBytes = 24;
constexpr std::size_t stepReads = 28;
constexpr std::size_t stepCharacters = 32;

/// The characters for the 32 values below 64 that are in `values`.
__attribute__((target("avx2"))) inline __m256i characters(__m256i values) {
  // The alphabet has five runs. What is to be added to a value is looked up by its run:
  // 0 for 26..51, 1..10 for the digits, 11 and 12 for '+' and '/', 13 for 0..25.
  const __m256i offsets =
      _mm256_setr_epi8('a' - 26, '0' - 52, '0' - 52, '0' - 52, '0' - 52, '0' - 52, '0' - 52,
                       '0' - 52, '0' - 52, '0' - 52, '0' - 52, '+' - 62, '/' - 63, 'A', 0, 0,
                       'a' - 26, '0' - 52, '0' - 52, '0' - 52, '0' - 52, '0' - 52, '0' - 52,
                       '0' - 52, '0' - 52, '0' - 52, '0' - 52, '+' - 62, '/' - 63, 'A', 0, 0);
  const __m256i beyondLetters = _mm256_subs_epu8(values, _mm256_set1_epi8(51));
  const __m256i isUpperCase = _mm256_cmpgt_epi8(_mm256_set1_epi8(26), values);
  const __m256i runs =
      _mm256_or_si256(beyondLetters, _mm256_and_si256(isUpperCase, _mm256_set1_epi8(13)));
  return _mm256_add_epi8(values, _mm256_shuffle_epi8(offsets, runs));
}

__attribute__((target("avx2"))) std::size_t encodeSteps(std::string_view bytes, char* out) {
  // Each group of three bytes a, b, c is spread over four as b, a, c, b, so that each of its
  // six-bit values lies within one of the two halves.
  const __m256i spread = _mm256_setr_epi8(1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10, 1, 0,
                                          2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10);
  std::size_t done = 0;
  for (; bytes.size() - done >= stepReads; done += stepBytes, out += stepCharacters) {
    const char* const in = bytes.data() + done;
    const __m256i groups = _mm256_shuffle_epi8(
        _mm256_inserti128_si256(
            _mm256_castsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(in))),
            _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + 12)), 1),
        spread);
    // Multiplying shifts each 16 bits by a distance of its own: the first and third value of a
    // group come down to their places, the second and fourth go up to theirs.
    const __m256i firstAndThird = _mm256_mulhi_epu16(
        _mm256_and_si256(groups, _mm256_set1_epi32(0x0FC0FC00)), _mm256_set1_epi32(0x04000040));
    const __m256i secondAndFourth = _mm256_mullo_epi16(
        _mm256_and_si256(groups, _mm256_set1_epi32(0x003F03F0)), _mm256_set1_epi32(0x01000010));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out),
                        characters(_mm256_or_si256(firstAndThird, secondAndFourth)));
  }
  return done;
}

}  // namespace

std::size_t encodeWideBase64(std::string_view bytes, char* out) {
  static const bool hasWideRegisters = __builtin_cpu_supports("avx2") != 0;
  return hasWideRegisters && bytes.size() >= stepReads ? encodeSteps(bytes, out) : 0;
}
#else
std::size_t encodeWideBase64(std::string_view, char*) { return 0; }
#endif

}  // namespace tarnix
