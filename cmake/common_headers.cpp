// Nothing: for the headers that all components share precompiled.
