// Instead of the C library of this system, which has none for this processor.
