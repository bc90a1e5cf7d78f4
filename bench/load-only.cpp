// The start time of mxtool: linked with the same libraries, it only returns.
int main()
{
    return 0;
}
