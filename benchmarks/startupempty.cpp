// A process of bench_startup, which ends at once. It is linked in several ways.
int main()
{
    return 0;
}
