#include "BusFileDataManager.h"

#include <cmath>

int BusFileDataManager::powerOfTwo(int value)
{
    if (value == 0)
        return -1;
    for (int i = 0; i < 10; ++i) {
        if (std::pow(2.0, i) == value)
            return i;
    }
    return -1;
}
