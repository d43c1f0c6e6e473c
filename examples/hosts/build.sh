# Builds and runs the host of each language over an installation: PREFIX=/usr/local sh -e build.sh
export PKG_CONFIG_PATH=$PREFIX/lib/pkgconfig LD_LIBRARY_PATH=$PREFIX/lib

cc calculate.c $(pkg-config --cflags --libs tarvane-vessel) -o calculate_c
./calculate_c

c++ -std=c++17 calculate.cpp $(pkg-config --cflags --libs tarvane-vessel) -o calculate_cpp
./calculate_cpp

# the library in the program
c++ -std=c++17 calculate.cpp $(pkg-config --cflags --libs tarvane-vessel-static) -o calculate_static
./calculate_static $(pkg-config --variable=datadir tarvane-vessel)

if command -v gfortran; then
gfortran $PREFIX/include/tarvane/fortran/tarvane_vessel.f90 calculate.f90 \
    $(pkg-config --libs tarvane-vessel) -o calculate_f
./calculate_f
fi

if command -v mcs; then
mcs -out:Calculate.exe Calculate.cs $PREFIX/include/tarvane/csharp/Tarvane.cs
mono Calculate.exe
fi
