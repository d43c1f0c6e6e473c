// The public header stands alone in C++, and its routines keep their plain names.
#include "tarvane/tarvane.h"

int main() {
    int32_t unit = 0;
    GETNEXTUNIT(&unit);
    return unit == 10 ? 0 : 1;
}
