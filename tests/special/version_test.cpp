#include "driver.hpp"
#include "kelvm/version.h"

#include <cstddef>
#include <cstring>

namespace {

TEST(Version, NamesTheBuild) {
  const std::string build = driver::tested_build();
  const auto version = reinterpret_cast<const VersionRecord* (*)()>(driver::library().symbol("kelvmGetLibVersion"));
  ASSERT_NE(version, nullptr);
  const VersionRecord* record = version();
  ASSERT_NE(record, nullptr);
  EXPECT_EQ(record, version()) << "a static record";
  EXPECT_EQ(record->versionMajor, 6);
  EXPECT_EQ(record->versionMinor, 0);
  EXPECT_EQ(record->buildMajor, 167);
  EXPECT_EQ(record->buildNumber, 628);
  const std::string code = build == "sse41" ? "y8" : build == "avx2" ? "v3" : "v4";
  EXPECT_EQ(std::memcmp(record->cpuCode, (code + std::string(2, '\0')).data(), 4), 0);
  __builtin_cpu_init();
  EXPECT_EQ(record->libraryName, "kelvm" + code + "-6.0.dll" + (__builtin_cpu_supports("sse4.2") ? "+" : ""));
  EXPECT_STREQ(record->versionText, "6.0 Update 2 build 167.41");
  EXPECT_STREQ(record->buildDate, "Feb 23 2009");
}

static_assert(offsetof(VersionRecord, cpuCode) == 16 && offsetof(VersionRecord, libraryName) == 24 &&
              offsetof(VersionRecord, versionText) == 32 && offsetof(VersionRecord, buildDate) == 40 &&
              sizeof(VersionRecord) == 48);

} // namespace
