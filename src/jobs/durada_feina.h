#pragma once
// The minutes of a job's service lines, one piece for the job engine (a place's or a stored job's
// lines) and the job editor (the lines being edited): a service common to the workers takes its
// whole time, the others are shared among them.

// Adds up service lines. The running total is rounded to a whole minute (halves to even) after
// every line, as it always has been, so the order of the lines can matter by a minute.
class SumaMinuts {
public:
    // `treballadors`: the workers that share the services that are not common (0 refuses them).
    explicit SumaMinuts(int treballadors) : m_treballadors(treballadors) {}
    // Throws std::domain_error for a shared line when there are no workers.
    void afegeix(double quantitat, double minutsPerUnitat, bool comu);
    int total() const { return m_total; }
    // The running total left the 16-bit range minute totals are kept in.
    bool desbordat() const { return m_desbordat; }

private:
    int m_treballadors;
    int m_total = 0;
    bool m_desbordat = false;
};

