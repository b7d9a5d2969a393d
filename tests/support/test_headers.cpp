// Only here to be compiled: the headers of the test library, once for all tests.
