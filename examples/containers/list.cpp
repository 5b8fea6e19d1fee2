// A route whose points are changed in place, and a second one from the nodes of the first.
#include <orvix/gsl/linked_list.h>

#include <cstdio>

namespace {

struct Point {
    double x;
    double y;
};

ListID spare;  // nodes are never freed, so their keeper lives as long as the program

Point* point(ListID* route) { return static_cast<Point*>(list_item(route)); }

void print(ListID route) {
    std::printf("route");
    for (list_head(&route); Point* p = point(&route); route.cur = route.cur->next) std::printf(" (%g %g)", p->x, p->y);
    std::printf("\n");
}

}  // namespace

int main() {
    ListID route;
    list_alloc(4, sizeof(Point), &route, &spare);
    for (double x = 0; Point* p = point(&route); route.cur = route.cur->next) *p = {x++, 0};
    print(route);

    list_tail(&route);
    list_prev(&route);
    list_delete(&route, 1, &spare);  // the third point goes; the cursor is on the fourth
    ListID corner;
    list_alloc(2, sizeof(Point), &corner, &spare);  // one node is at hand, one is allocated
    *point(&corner) = {1, 1};
    corner.cur = corner.cur->next;
    *point(&corner) = {3, 1};
    list_ins(&route, &corner);
    print(route);

    list_free(&route, &spare);
    list_alloc(5, sizeof(Point), &route, &spare);  // all of them were at hand
    list_free(&route, &spare);
}
