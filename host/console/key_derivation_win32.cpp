#include "host/console/key_derivation_win32.h"

#include <windows.h>

#include "system/windows/system_library_win32.h"

namespace brantel::host {
namespace {

constexpr ULONG kKeyBytes = 32;
constexpr ULONG kHmac = 8;  // BCRYPT_ALG_HANDLE_HMAC_FLAG

// The entry points are looked for when they are needed: the host runs on systems that lack them.
using OpenProvider = LONG WINAPI(void** provider, const wchar_t* algorithm, const wchar_t* maker,
                                 ULONG flags);
using CloseProvider = LONG WINAPI(void* provider, ULONG flags);
using DerivePbkdf2 = LONG WINAPI(void* provider, UCHAR* password, ULONG password_size, UCHAR* salt,
                                 ULONG salt_size, ULONGLONG iterations, UCHAR* key, ULONG key_size,
                                 ULONG flags);

}  // namespace

std::optional<std::string> DeriveKey(std::string_view password, std::string_view salt,
                                     std::uint32_t iterations) {
  const SystemLibrary library("bcrypt.dll");
  if (!library) return std::nullopt;
  OpenProvider* open = nullptr;
  CloseProvider* close = nullptr;
  DerivePbkdf2* derive = nullptr;
  library.Find("BCryptOpenAlgorithmProvider", open);
  library.Find("BCryptCloseAlgorithmProvider", close);
  library.Find("BCryptDeriveKeyPBKDF2", derive);
  if (open == nullptr || close == nullptr || derive == nullptr) return std::nullopt;
  void* provider = nullptr;
  if (open(&provider, L"SHA256", nullptr, kHmac) < 0) return std::nullopt;
  std::string secret(password);
  std::string salted(salt);
  std::string key(kKeyBytes, '\0');
  const auto bytes = [](std::string& text) { return reinterpret_cast<UCHAR*>(text.data()); };
  const LONG derived =
      derive(provider, bytes(secret), static_cast<ULONG>(secret.size()), bytes(salted),
             static_cast<ULONG>(salted.size()), iterations, bytes(key), kKeyBytes, 0);
  close(provider, 0);
  if (derived < 0) return std::nullopt;
  return key;
}

}  // namespace brantel::host
