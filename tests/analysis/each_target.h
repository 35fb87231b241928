/// Tests that run once for every instruction set that this machine has.
#pragma once

#include <gtest/gtest.h>

#include <hwy/targets.h>

#include <random>
#include <string>

namespace tavix_test {

class EachTargetTest : public testing::TestWithParam<std::int64_t> {
protected:
    EachTargetTest() { hwy::SetSupportedTargetsForTest(GetParam()); }
    ~EachTargetTest() override { hwy::SetSupportedTargetsForTest(0); }

    std::mt19937 m_random{31};
};

inline const auto EACH_TARGET = testing::ValuesIn(hwy::SupportedAndGeneratedTargets());

inline std::string TargetName(const testing::TestParamInfo<std::int64_t> &param) {
    return hwy::TargetName(param.param);
}

} // namespace tavix_test
