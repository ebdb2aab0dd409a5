// Nothing of its own: the headers that nearly every test begins with are precompiled for this file,
// and the tests take them from here.
