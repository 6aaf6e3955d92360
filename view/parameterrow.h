#pragma once

#include "parameterinformation.h"

#include <cstddef>

/** The options of a parameter: texts to translate, and their values unless they count from 0. */
struct OptionList
{
    const char *const *texts = nullptr;
    const float *values = nullptr; ///< null: the options are numbered from 0
    std::size_t count = 0;
};

template <std::size_t Count> constexpr OptionList numbered(const char *const (&texts)[Count])
{
    return { texts, nullptr, Count };
}

/** Fails to compile unless every option has its value. */
template <std::size_t Count>
constexpr OptionList valued(const char *const (&texts)[Count], const float (&values)[Count])
{
    return { texts, values, Count };
}

/** One row of a table of parameters; the texts are the sources of the translation. */
struct ParameterRow
{
    const char *label;
    int dataId;
    DisplayType type;
    int length;
    const char *unit;
    float scale;
    int min;
    int max;
    OptionList options;
};
