#include <corvane/classic/equilibria/list_different.h>

#include <algorithm>

void list_different(Vector<double> const& a, double d, Vector<double>& list, int& count,
                    Vector<int>& idx) {
    for (int i = 0; i < a.size(); ++i) {
        const double v = a[i] + d;
        idx[i] = static_cast<int>(std::find(list.data, list.data + count, v) - list.data);
        if (idx[i] < count) continue;
        if (count + 1 > list.size()) list.size(count + 1);
        list[count++] = v;
    }
}
