// The target that the precompiled header of the tests belongs to needs a source file.
