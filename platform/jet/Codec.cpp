#include "platform/jet/Codec.h"

#include "platform/jet/Error.h"

namespace jet {

ByteSpan Part(ByteSpan bytes, std::size_t at, std::size_t length) {
  if (at > bytes.size() || length > bytes.size() - at) throw Error("gegevens reiken buiten hun grenzen");
  return bytes.subspan(at, length);
}

}  // namespace jet
