// What mxtool costs before it does anything: linked with the same libraries, it only returns.
int main()
{
    return 0;
}
