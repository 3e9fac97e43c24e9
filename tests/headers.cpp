// Only there to have the shared headers compiled.
