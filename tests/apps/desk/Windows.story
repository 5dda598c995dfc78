# What only real windows show: what is painted while something runs, and what the mouse drags.

== Roll forward shows how far it is while it runs
Clients
    Clients more: 2000
    Choose Tax year: 2017/18
    Next
        Preview shows how far it is while it runs
        Click Close
    Click Roll forward...

== Column that was dragged is as wide at the next opening
Clients
    Drag an edge of Clients
In C0002
    Choose Kind: Interest
    Next
        Type Source: Saltmarsh Savings
        Press Ctrl+Tab
        Drag an edge of Payments
        Click Cancel
    Click New...
Clients
    As wide as dragged: Clients
In C0002
    Choose Kind: Interest
    Next
        Type Source: Saltmarsh Savings
        Press Ctrl+Tab
        As wide as dragged: Payments
        Click Cancel
    Click New...
