// The digest of a token, by the system.
#include <windows.h>
// clang-format off
#include <bcrypt.h>
// clang-format on

#include <stdexcept>

#include "base/system/random.h"
#include "service/http/tokens.h"

namespace zentaro::service {

std::string sha256(std::string_view text) {
  constexpr ULONG size = 32;
  std::string digest(size, '\0'), copy(text);
  BCRYPT_ALG_HANDLE algorithm = nullptr;
  BCRYPT_HASH_HANDLE hash = nullptr;
  const auto bytes = [](std::string& data) { return reinterpret_cast<PUCHAR>(data.data()); };
  const bool isDone = ::BCryptOpenAlgorithmProvider(&algorithm, BCRYPT_SHA256_ALGORITHM, nullptr, 0) == 0 &&
                      ::BCryptCreateHash(algorithm, &hash, nullptr, 0, nullptr, 0, 0) == 0 &&
                      ::BCryptHashData(hash, bytes(copy), static_cast<ULONG>(copy.size()), 0) == 0 &&
                      ::BCryptFinishHash(hash, bytes(digest), size, 0) == 0;
  if (hash != nullptr) ::BCryptDestroyHash(hash);
  if (algorithm != nullptr) ::BCryptCloseAlgorithmProvider(algorithm, 0);
  if (!isDone) throw std::runtime_error("SHA-256");
  return system::hexOf(digest);
}

}  // namespace zentaro::service
