/* As little as a library can be. */
int nothing_is_here;
