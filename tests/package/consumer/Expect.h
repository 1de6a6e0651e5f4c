// What the recipes need of a test framework.
#pragma once

#include <cstdlib>
#include <iostream>

inline void expect(bool condition, const char* what)
{
    if (condition)
        return;
    std::cerr << "not so: " << what << '\n';
    std::exit(1);
}

#define EXPECT(condition) expect(condition, #condition)
