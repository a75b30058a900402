#include <gmock/gmock.h>

#include <cstdlib>
#include <iostream>
#include <locale>

// ZORBASE_TEST_LOCALE names the locale of the whole run, for instance one with a decimal comma.
int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  if (const char* const name = std::getenv("ZORBASE_TEST_LOCALE")) {
    try {
      std::locale::global(std::locale(name));
    } catch (const std::exception&) {
      std::cerr << "The locale " << name << " is not installed (Debian: package locales-all)\n";
      return 1;
    }
  }
  return RUN_ALL_TESTS();
}
