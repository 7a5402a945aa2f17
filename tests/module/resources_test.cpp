#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <oleauto.h>

#include <array>
#include <cstring>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "system/windows/bstr_win32.h"
#include "tests/module/expected_classes.h"
#include "tests/module/loaded_module.h"
#include "tests/module/own_bits.h"
#include "tests/module/utf8_text.h"

namespace brantel {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::ValuesIn;

// RT_ICON and RT_GROUP_ICON, which the headers define for the ANSI functions here.
const wchar_t* const kIconType = MAKEINTRESOURCEW(3);
const wchar_t* const kIconGroupType = MAKEINTRESOURCEW(14);

std::string Resource(HMODULE module, WORD id, const wchar_t* type) {
  const HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(id), type);
  if (found == nullptr) return {};
  const auto* bytes = static_cast<const char*>(LockResource(LoadResource(module, found)));
  return {bytes, SizeofResource(module, found)};
}

// NOLINTNEXTLINE(readability-non-const-parameter): as the system has it.
BOOL CALLBACK NoteId(HMODULE, LPCWSTR, LPWSTR name, LONG_PTR ids) {
  reinterpret_cast<std::set<WORD>*>(ids)->insert(LOWORD(reinterpret_cast<ULONG_PTR>(name)));
  return TRUE;
}

std::set<WORD> IdsOfType(HMODULE module, const wchar_t* type) {
  std::set<WORD> ids;
  EnumResourceNamesW(module, type, NoteId, reinterpret_cast<LONG_PTR>(&ids));
  return ids;
}

// What hosts know the classes' resources of one kind by.
std::set<WORD> ExpectedIds(WORD ExpectedClass::*id) {
  std::set<WORD> ids;
  for (const ExpectedClass& expected : kExpectedClasses)
    ids.insert(expected.*id);
  return ids;
}

TEST(RegistryScripts, AreThoseOfTheClasses) {
  const LoadedModule module;
  EXPECT_EQ(IdsOfType(module.handle(), L"REGISTRY"),
            ExpectedIds(&ExpectedClass::registry_script_id));
}

class ResourcesOfClass : public ::testing::TestWithParam<ExpectedClass> {};

INSTANTIATE_TEST_SUITE_P(Classes, ResourcesOfClass, ValuesIn(kExpectedClasses), NameOfClass);

TEST_P(ResourcesOfClass, HaveARegistryScriptOfThatClassAndNoOther) {
  const LoadedModule module;
  const std::string script = Resource(module.handle(), GetParam().registry_script_id, L"REGISTRY");

  EXPECT_THAT(script, HasSubstr(ToUtf8(GetParam().clsid)));
  EXPECT_THAT(script, HasSubstr(ToUtf8(GetParam().prog_id)));
  EXPECT_THAT(script, HasSubstr(ToUtf8(GetParam().description)));
  EXPECT_THAT(script, HasSubstr("%MODULE%"));
  for (const ExpectedClass& other : kExpectedClasses) {
    if (other.icon_id == GetParam().icon_id) continue;
    EXPECT_THAT(script, Not(HasSubstr(ToUtf8(other.clsid)))) << other;
    EXPECT_THAT(script, Not(HasSubstr(other.name))) << other;
  }
}

// Icon groups as they lie in a library's resources.
#pragma pack(push, 2)
struct GroupHeader {
  WORD reserved;
  WORD type;  // 1 for icons
  WORD count;
};
struct GroupEntry {
  BYTE width;
  BYTE height;
  BYTE colours;
  BYTE reserved;
  WORD planes;
  WORD bits;
  DWORD size;
  WORD image_id;
};
#pragma pack(pop)

// The images of a group by their width in pixels.
std::map<int, std::string> IconImages(HMODULE module, WORD id) {
  const std::string group = Resource(module, id, kIconGroupType);
  GroupHeader header{};
  if (group.size() < sizeof header) return {};
  std::memcpy(&header, group.data(), sizeof header);
  std::map<int, std::string> images;
  for (std::size_t i = 0; i < header.count; ++i) {
    GroupEntry entry{};
    std::memcpy(&entry, group.data() + sizeof header + i * sizeof entry, sizeof entry);
    EXPECT_EQ(entry.width, entry.height);
    images[entry.width] = Resource(module, entry.image_id, kIconType);
    EXPECT_EQ(images[entry.width].size(), entry.size);
  }
  return images;
}

TEST_P(ResourcesOfClass, HaveAnIconIn16And32And48Pixels) {
  const LoadedModule module;
  const auto images = IconImages(module.handle(), GetParam().icon_id);

  EXPECT_THAT(images, ::testing::SizeIs(3));
  for (const int width : {16, 32, 48}) {
    ASSERT_TRUE(images.contains(width)) << width;
    BITMAPINFOHEADER header{};
    ASSERT_GT(images.at(width).size(), sizeof header);
    std::memcpy(&header, images.at(width).data(), sizeof header);
    EXPECT_EQ(header.biSize, sizeof header) << width;
    EXPECT_EQ(header.biWidth, width);
    EXPECT_EQ(header.biHeight, 2 * width) << "the picture and its mask";
  }
}

// What an image of an icon consists of, when it has sixteen colours.
class SixteenColourImage {
 public:
  SixteenColourImage(const std::string& image, int width) : image_(image), width_(width) {}

  [[nodiscard]] std::size_t ExpectedSize() const {
    return MaskOffset() + static_cast<std::size_t>(width_) * RowSize(1);
  }
  [[nodiscard]] bool IsMasked(int x, int y) const { return Pixel(MaskOffset(), 1, x, y) != 0; }
  [[nodiscard]] COLORREF Colour(int x, int y) const {
    RGBQUAD colour{};
    std::memcpy(&colour, &image_[kPaletteOffset + Pixel(kPictureOffset, 4, x, y) * sizeof colour],
                sizeof colour);
    return RGB(colour.rgbRed, colour.rgbGreen, colour.rgbBlue);
  }

 private:
  static constexpr std::size_t kPaletteOffset = sizeof(BITMAPINFOHEADER);
  static constexpr std::size_t kPictureOffset = kPaletteOffset + 16 * sizeof(RGBQUAD);

  // In bytes: rows fill units of 32 bits.
  [[nodiscard]] std::size_t RowSize(std::size_t bits) const {
    return (static_cast<std::size_t>(width_) * bits + 31) / 32 * 4;
  }
  [[nodiscard]] std::size_t MaskOffset() const {
    return kPictureOffset + static_cast<std::size_t>(width_) * RowSize(4);
  }
  [[nodiscard]] std::size_t Pixel(std::size_t offset, std::size_t bits, int x, int y) const {
    const std::size_t bit = static_cast<std::size_t>(x) * bits;
    const auto byte = static_cast<unsigned char>(
        image_[offset + static_cast<std::size_t>(y) * RowSize(bits) + bit / 8]);
    return byte >> (8 - bits - bit % 8) & ((1U << bits) - 1);
  }

  const std::string& image_;
  int width_;
};

TEST_P(ResourcesOfClass, HaveAnIconOfSixteenColours) {
  const LoadedModule module;
  for (const auto& [width, image] : IconImages(module.handle(), GetParam().icon_id)) {
    BITMAPINFOHEADER header{};
    ASSERT_GT(image.size(), sizeof header);
    std::memcpy(&header, image.data(), sizeof header);
    EXPECT_EQ(header.biBitCount, 4) << width;
    EXPECT_EQ(header.biCompression, static_cast<DWORD>(BI_RGB)) << "old systems read no other";
    EXPECT_EQ(image.size(), SixteenColourImage(image, width).ExpectedSize()) << width;
  }
}

// Elsewhere the system would invert what lies below the icon.
TEST_P(ResourcesOfClass, HaveAnIconThatIsBlackWhereItIsNotShown) {
  const LoadedModule module;
  for (const auto& [width, image] : IconImages(module.handle(), GetParam().icon_id)) {
    const SixteenColourImage icon(image, width);
    ASSERT_EQ(image.size(), icon.ExpectedSize());
    int masked = 0;
    for (int y = 0; y < width; ++y) {
      for (int x = 0; x < width; ++x) {
        if (!icon.IsMasked(x, y)) continue;
        ++masked;
        EXPECT_EQ(icon.Colour(x, y), RGB(0, 0, 0)) << width << ": " << x << ", " << y;
      }
    }
    EXPECT_GT(masked, 0) << width;
    EXPECT_LT(masked, width * width) << width;
  }
}

TEST(IconGroups, AreThoseOfTheClassesAndOfDifferentPictures) {
  const LoadedModule module;
  const std::set<WORD> ids = IdsOfType(module.handle(), kIconGroupType);
  EXPECT_EQ(ids, ExpectedIds(&ExpectedClass::icon_id));

  for (const int width : {16, 32, 48}) {
    std::set<std::string> pictures;
    for (const WORD id : ids)
      pictures.insert(IconImages(module.handle(), id)[width]);
    EXPECT_EQ(pictures.size(), ids.size()) << width;
  }
}

TEST(StringTable, NamesTheProject) {
  const LoadedModule module;
  std::array<wchar_t, 512> text{};

  ASSERT_GT(LoadStringW(module.handle(), 100, text.data(), static_cast<int>(text.size())), 0);
  EXPECT_EQ(std::wstring(text.data()), L"Brantel_Notifications");
}

class VersionInformation : public ::testing::Test {
 protected:
  VersionInformation() : block_(Size()) {
    GetFileVersionInfoW(ModuleFile().c_str(), 0, static_cast<DWORD>(block_.size()), block_.data());
  }

  static std::size_t Size() {
    DWORD unused = 0;
    return GetFileVersionInfoSizeW(ModuleFile().c_str(), &unused);
  }

  // A part of the block; null where there is none.
  template <typename Part>
  const Part* Query(const std::wstring& path) const {
    void* part = nullptr;
    UINT size = 0;
    const BOOL found = VerQueryValueW(block_.data(), path.c_str(), &part, &size);
    return found != FALSE && size != 0 ? static_cast<const Part*>(part) : nullptr;
  }

  std::vector<BYTE> block_;
};

TEST_F(VersionInformation, IsThatOfALibraryFor32BitWindows) {
  const auto* fixed = Query<VS_FIXEDFILEINFO>(L"\\");

  ASSERT_NE(fixed, nullptr);
  EXPECT_EQ(fixed->dwSignature, 0xFEEF04BDU);
  EXPECT_EQ(fixed->dwFileType, static_cast<DWORD>(VFT_DLL));
  EXPECT_EQ(fixed->dwFileFlags & VS_FF_DEBUG, 0U);
}

TEST_F(VersionInformation, HasTextsInItsOwnTranslation) {
  struct Translation {
    WORD language;
    WORD code_page;
  };
  const auto* translation = Query<Translation>(L"\\VarFileInfo\\Translation");
  ASSERT_NE(translation, nullptr);
  std::array<wchar_t, 32> folder{};
  wsprintfW(folder.data(), LR"(\StringFileInfo\%04x%04x\)", translation->language,
            translation->code_page);

  const auto* original_name = Query<wchar_t>(std::wstring(folder.data()) + L"OriginalFilename");
  ASSERT_NE(original_name, nullptr);
  EXPECT_EQ(std::wstring(original_name), L"Brantel_Notifications.dll");
}

class TypeLibrary : public ::testing::Test {
 protected:
  struct Documentation {
    std::wstring name;
    std::wstring description;
  };

  TypeLibrary() {
    if (FAILED(LoadTypeLibEx(ModuleFile().c_str(), REGKIND_NONE, library_.put()))) {
      throw std::runtime_error("the module holds no type library");
    }
  }

  // Of the whole library at index -1.
  [[nodiscard]] Documentation DocumentationOf(int index) const {
    Bstr name;
    Bstr description;
    EXPECT_EQ(
        library_->GetDocumentation(index, name.in_out(), description.in_out(), nullptr, nullptr),
        S_OK);
    return {std::wstring(name.view()), std::wstring(description.view())};
  }

  ComPointer<ITypeLib> library_;
};

TEST_F(TypeLibrary, IsTheResourceNumberedOne) {
  const LoadedModule module;

  EXPECT_THAT(IdsOfType(module.handle(), L"TYPELIB"), ::testing::ElementsAre(1));
  ComPointer<ITypeLib> by_number;
  EXPECT_EQ(LoadTypeLibEx((ModuleFile() + L"\\1").c_str(), REGKIND_NONE, by_number.put()), S_OK);
}

TEST_F(TypeLibrary, HasItsNameDescriptionIdentifierAndVersion) {
  const Documentation documentation = DocumentationOf(-1);
  EXPECT_EQ(documentation.name, L"BRANTEL_NOTIFICATIONSLib");
  EXPECT_EQ(documentation.description, L"Brantel_Notifications 1.0 Type Library");

  TLIBATTR* attributes = nullptr;
  ASSERT_EQ(library_->GetLibAttr(&attributes), S_OK);
  EXPECT_EQ(attributes->guid, ToGuid(kExpectedLibraryId));
  EXPECT_EQ(attributes->wMajorVerNum, 1);
  EXPECT_EQ(attributes->wMinorVerNum, 0);
  EXPECT_EQ(attributes->syskind, kSystemKind);
  EXPECT_EQ(attributes->lcid, 0U);
  library_->ReleaseTLibAttr(attributes);
}

TEST_F(TypeLibrary, DescribesTheClassesAndNothingElse) {
  constexpr int kCount = static_cast<int>(kExpectedClasses.size());
  ASSERT_EQ(library_->GetTypeInfoCount(), UINT{kCount});

  for (int index = 0; index < kCount; ++index) {
    const ExpectedClass& expected = kExpectedClasses.at(static_cast<std::size_t>(index));
    const Documentation documentation = DocumentationOf(index);
    EXPECT_EQ(ToUtf8(documentation.name), expected.name);
    EXPECT_EQ(documentation.description, expected.description);

    TYPEKIND kind = TKIND_MAX;
    EXPECT_EQ(library_->GetTypeInfoType(static_cast<UINT>(index), &kind), S_OK);
    EXPECT_EQ(kind, TKIND_COCLASS) << expected;
    ComPointer<ITypeInfo> type;
    ASSERT_EQ(library_->GetTypeInfo(static_cast<UINT>(index), type.put()), S_OK);
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(type->GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->guid, ToGuid(expected.clsid)) << expected;
    type->ReleaseTypeAttr(attributes);
  }
}

}  // namespace
}  // namespace brantel
