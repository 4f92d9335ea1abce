// Nothing: the precompiled headers of the tests need a source beside them.
