// A value that holds for the time of a scope, however the scope is left.
#pragma once

#include <utility>

namespace caretwell {

template <class T>
class TValueScope {
public:
    TValueScope(T& variable, T value) : FVariable(variable), FOld(std::exchange(variable, value)) {}
    ~TValueScope() { FVariable = FOld; }
    TValueScope(const TValueScope&) = delete;
    TValueScope& operator=(const TValueScope&) = delete;

private:
    T& FVariable;
    T FOld;
};

}  // namespace caretwell
