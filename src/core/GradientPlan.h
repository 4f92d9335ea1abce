#pragma once

namespace weldline::core {

enum class FirstScheme { None, Default, Upwind };
enum class SecondScheme { None, Rbf, IterativeUnlessSingular };

// Which gradient schemes a run takes: the first fills the first gradient set, the second the
// second set, which is smoothed like the first where it is filled.
struct GradientPlan {
    FirstScheme first;
    SecondScheme second;
};

// The plan by m_WeldlingAngleMethod and m_GradMethodMFT. On purpose: method 4 with any other
// gradient method than 1 to 4 computes no gradient at all, and the sets keep what they hold.
constexpr GradientPlan gradientPlan(int angleMethod, int gradientMethod) {
    if (angleMethod != 4) return {FirstScheme::Default, SecondScheme::None};
    switch (gradientMethod) {
        case 1:
            return {FirstScheme::Default, SecondScheme::None};
        case 2:
            return {FirstScheme::Upwind, SecondScheme::Rbf};
        case 3:
            return {FirstScheme::Upwind, SecondScheme::IterativeUnlessSingular};
        case 4:
            return {FirstScheme::Upwind, SecondScheme::None};
        default:
            return {FirstScheme::None, SecondScheme::None};
    }
}

}  // namespace weldline::core
