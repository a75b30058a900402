#include <gmock/gmock.h>

#include <cstdlib>
#include <iostream>
#include <locale>

// ZORBASE_TEST_LOCALE names the locale of the whole run, for instance one with a decimal comma. Laws are tried on the same cases in
// every run, unless RC_PARAMS says otherwise.
int main(int argc, char** argv) {
  ::setenv("RC_PARAMS", "seed=1", 0);
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
