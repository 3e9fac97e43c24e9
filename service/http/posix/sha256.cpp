// The digest of a token.
#include <openssl/evp.h>

#include <stdexcept>

#include "base/system/random.h"
#include "service/http/tokens.h"

namespace zentaro::service {

std::string sha256(std::string_view text) {
  std::string digest(EVP_MAX_MD_SIZE, '\0');
  unsigned int size = 0;
  if (EVP_Digest(text.data(), text.size(), reinterpret_cast<unsigned char*>(digest.data()), &size,
                 EVP_sha256(), nullptr) != 1)
    throw std::runtime_error("SHA-256");
  return system::hexOf({digest.data(), size});
}

}  // namespace zentaro::service
