// Variables of the environment that a test changes.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>

// Gives the variable its earlier value back, or none, when the test is over.
class EnvironmentVariable {
public:
    explicit EnvironmentVariable(const char* name) : name_(name) {
        if (const char* value = std::getenv(name)) before_ = value;
    }
    ~EnvironmentVariable() { before_ ? set(*before_) : unset(); }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

    void set(const std::string& value) const { ::setenv(name_, value.c_str(), 1); }
    void unset() const { ::unsetenv(name_); }

private:
    const char* name_;
    std::optional<std::string> before_;
};
