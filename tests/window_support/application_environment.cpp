#include <QApplication>

#include <gtest/gtest.h>

namespace {

/// The one application object of this test program; ctest has it run without a screen.
class ApplicationEnvironment final : public testing::Environment {
public:
    void SetUp() override
    {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        application_ = std::make_unique<QApplication>(count_, words_);
    }
    void TearDown() override { application_.reset(); }

private:
    int count_ = 1;
    char name_[5] = "test";
    char* words_[2] = {name_, nullptr};
    std::unique_ptr<QApplication> application_;
};

const testing::Environment* const environment =
    testing::AddGlobalTestEnvironment(std::make_unique<ApplicationEnvironment>().release());

}
