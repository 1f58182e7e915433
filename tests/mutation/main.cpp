// The core's tests on mutated sources. Without a file for the record they end at the first failure.

#include "mutation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sys/resource.h>
#include <sys/time.h>

namespace tyxo_mutation {
int chosen = -1;
unsigned char reached[most_mutants];

namespace {

/// Before every other object is made: the mutants of tables are alive while these are filled.
__attribute__((constructor(101))) void choose() {
    const char* number = std::getenv("TYXO_MUTANT");
    if (number != nullptr) chosen = std::atoi(number);
}

/// Writes which mutants each test reaches.
class recorder : public testing::EmptyTestEventListener {
  public:
    explicit recorder(const char* path) : file_(path) { write("start", 0); }

    void OnTestStart(const testing::TestInfo& /*test*/) override { std::ranges::fill(reached, 0); }
    void OnTestEnd(const testing::TestInfo& test) override {
        const auto name = std::string(test.test_suite_name()) + '.' + test.name();
        write(test.result()->Passed() ? name : "failed:" + name, test.result()->elapsed_time());
    }

  private:
    void write(const std::string& name, long milliseconds) {
        file_ << name << ' ' << milliseconds;
        for (int mutant = 0; mutant < most_mutants; ++mutant)
            if (reached[mutant] != 0) file_ << ' ' << mutant;
        file_ << '\n';
    }

    std::ofstream file_;
};

/// An endless loop ends here, whatever else the machine has to do; one that eats the memory too.
void limit(int milliseconds) {
    const itimerval time{{0, 0}, {milliseconds / 1000, milliseconds % 1000 * 1000}};
    setitimer(ITIMER_PROF, &time, nullptr);
    const rlimit memory{2'000'000'000, 2'000'000'000};
    setrlimit(RLIMIT_AS, &memory);
    const rlimit no_core{0, 0};
    setrlimit(RLIMIT_CORE, &no_core);
}

} // namespace
} // namespace tyxo_mutation

extern "C" const int __start_tyxo_mutants[];
extern "C" const int __stop_tyxo_mutants[];

int main(int count, char** arguments) {
    using namespace tyxo_mutation;
    testing::InitGoogleTest(&count, arguments);
    if (const char* time = std::getenv("TYXO_MUTANT_MS")) limit(std::atoi(time));
    if (const char* list = std::getenv("TYXO_MUTANT_LIST")) {
        std::ofstream file(list);
        for (const int* mutant = __start_tyxo_mutants; mutant != __stop_tyxo_mutants; ++mutant)
            file << *mutant << '\n';
    }
    auto& listeners = testing::UnitTest::GetInstance()->listeners();
    if (const char* record = std::getenv("TYXO_MUTANT_RECORD"))
        listeners.Append(new recorder(record));
    else
        GTEST_FLAG_SET(fail_fast, true);
    return RUN_ALL_TESTS();
}
