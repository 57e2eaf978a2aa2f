// Versions of functions of the C library that older systems have, too; included first by the wheel.
#pragma once

__asm__(".symver hypot,hypot@GLIBC_2.2.5");
