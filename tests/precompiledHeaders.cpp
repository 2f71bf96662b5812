// The program that the precompiled headers of all tests are made with. It holds no test.
