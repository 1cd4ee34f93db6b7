// Nothing: what every start costs.
int main()
{
    return 0;
}
